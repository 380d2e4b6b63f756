// SPDX-License-Identifier: MIT
#include "com/ThreadState.h"

#include <memory>

namespace vlgs::com {

namespace {
// A plain pointer: it needs no destructor at a thread's end, when this library may be gone already.
thread_local ThreadState* current = nullptr;
} // namespace

ThreadState& ThreadState::make() {
    if (!current)
        current = std::make_unique<ThreadState>().release();
    return *current;
}

ThreadState* ThreadState::find() noexcept {
    return current;
}

DualObject* ThreadState::outgoingOf(const Object& object) noexcept {
    if (!current)
        return nullptr;
    const auto found = current->outgoing.find(&object);
    return found == current->outgoing.end() ? nullptr : found->second;
}

void ThreadState::dropUnused() noexcept {
    if (current && current->outgoing.empty() && current->incoming.empty())
        std::unique_ptr<ThreadState>(std::exchange(current, nullptr));
}

} // namespace vlgs::com
