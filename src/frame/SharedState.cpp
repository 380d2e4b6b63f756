#include "frame/SharedState.h"

#include "base/Error.h"

#include <limits>

namespace vlgs {

namespace {

// Objects that outlive their thread's state (static ones do) still count themselves out.
constinit thread_local bool stateEnded = false;

struct StateOwner {
    SharedState state;
    ~StateOwner() { stateEnded = true; }
};

} // namespace

SharedState& SharedState::ofThread() noexcept {
    thread_local StateOwner owner;
    return owner.state;
}

void AddInstance() {
    SharedState& state = SharedState::ofThread();
    if (state.instances == std::numeric_limits<std::int32_t>::max())
        raise(RunTimeError::Overflow);
    ++state.instances;
}

void ReleaseInstance() noexcept {
    if (stateEnded)
        return;
    SharedState& state = SharedState::ofThread();
    if (state.instances > std::numeric_limits<std::int32_t>::min())
        --state.instances;
    if (state.instances < 1)
        state.catalogue = nullptr;
}

} // namespace vlgs
