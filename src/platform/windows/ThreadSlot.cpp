// SPDX-License-Identifier: MIT
// Places of fibers: of the host's two kinds the one that calls back.
#include "platform/ThreadSlot.h"

#include "platform/windows/Host.h"

#include <utility>

namespace vlgs {

namespace {

void WINAPI end(void* value) {
    delete static_cast<ThreadValue*>(value);
}

} // namespace

ThreadSlot::ThreadSlot() : key_(FlsAlloc(&end)) {}

ThreadSlot::~ThreadSlot() {
    if (const auto key = std::exchange(key_, FLS_OUT_OF_INDEXES); key != FLS_OUT_OF_INDEXES)
        FlsFree(key); // ends what is left
}

ThreadValue* ThreadSlot::get() const noexcept {
    return key_ == FLS_OUT_OF_INDEXES ? nullptr : static_cast<ThreadValue*>(FlsGetValue(key_));
}

void ThreadSlot::set(std::unique_ptr<ThreadValue> value) const {
    if (key_ == FLS_OUT_OF_INDEXES || !FlsSetValue(key_, value.get()))
        raise(RunTimeError::OutOfMemory);
    static_cast<void>(value.release());
}

} // namespace vlgs
