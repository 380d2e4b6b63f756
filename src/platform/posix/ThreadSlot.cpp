// SPDX-License-Identifier: MIT
#include "platform/ThreadSlot.h"

#include <pthread.h>
#include <utility>

namespace vlgs {

namespace {

constexpr auto none = ~0ul;

pthread_key_t keyOf(unsigned long key) {
    return static_cast<pthread_key_t>(key);
}

void end(void* value) {
    delete static_cast<ThreadValue*>(value);
}

} // namespace

ThreadSlot::ThreadSlot() : key_(none) {
    pthread_key_t key = 0;
    if (pthread_key_create(&key, &end) == 0)
        key_ = key;
}

ThreadSlot::~ThreadSlot() {
    ThreadValue* mine = get();
    const auto key = std::exchange(key_, none);
    delete mine;
    if (key != none)
        pthread_key_delete(keyOf(key));
}

ThreadValue* ThreadSlot::get() const noexcept {
    return key_ == none ? nullptr : static_cast<ThreadValue*>(pthread_getspecific(keyOf(key_)));
}

void ThreadSlot::set(std::unique_ptr<ThreadValue> value) const {
    if (key_ == none || pthread_setspecific(keyOf(key_), value.get()) != 0)
        raise(RunTimeError::OutOfMemory);
    static_cast<void>(value.release());
}

} // namespace vlgs
