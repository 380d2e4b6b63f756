// SPDX-License-Identifier: MIT
#include "frame/SharedState.h"

#include "base/Error.h"
#include "platform/ThreadSlot.h"

#include <limits>
#include <new>

namespace vlgs {

SharedState& SharedState::ofThread() {
    return ThreadOwned<SharedState>::make();
}

void AddInstance() {
    SharedState& state = SharedState::ofThread();
    if (state.instances == std::numeric_limits<std::int32_t>::max())
        raise(RunTimeError::Overflow);
    ++state.instances;
}

void ReleaseInstance() noexcept {
    try {
        SharedState& state = SharedState::ofThread();
        if (state.instances > std::numeric_limits<std::int32_t>::min())
            --state.instances;
        if (state.instances < 1)
            state.catalogue = nullptr;
    } catch (const Error&) {
        // Static objects still count themselves out when the state of all threads has ended.
    } catch (const std::bad_alloc&) {
    }
}

} // namespace vlgs
