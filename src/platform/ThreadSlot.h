// SPDX-License-Identifier: MIT
// One object for each thread, which ends with its thread.
//
// It stands in for a `thread_local` object with a destructor, which must not be in a library that is unloaded
// and loaded again: the compiler's run time holds the library's file for such an object and lets go of it at
// the thread's end, inside a lock that unloading waits for. Here the host itself calls back at the end of a
// thread, or at the end of the library's file for the threads that are left.
#pragma once

#include "base/Error.h"

#include <memory>

namespace vlgs {

/// What a slot can hold. Its end may not ask for the slot that held it.
struct ThreadValue {
    virtual ~ThreadValue() = default;
};

/// A place that has its own content on each thread.
class ThreadSlot {
  public:
    ThreadSlot();
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;
    ~ThreadSlot();

    /// The calling thread's value; null when it has none, and after the slot's own end.
    ThreadValue* get() const noexcept;
    /// Fills the calling thread's place. Raises 7 when the host has none left or the slot has ended.
    void set(std::unique_ptr<ThreadValue> value) const;

  private:
    unsigned long key_;
};

/// The calling thread's object of a type: `ThreadOwned<SharedState>::make().instances`.
template <class T>
class ThreadOwned {
  public:
    /// Null when the thread has made none, or it has ended.
    static T* find() noexcept {
        ThreadValue* held = slot().get();
        return held ? &static_cast<Held*>(held)->value : nullptr;
    }
    /// Raises 7 when there is no memory, or the library is ending.
    static T& make() {
        if (T* known = find())
            return *known;
        auto held = std::make_unique<Held>();
        T& made = held->value;
        slot().set(std::move(held));
        return made;
    }

  private:
    struct Held final : ThreadValue {
        T value;
    };
    static const ThreadSlot& slot() noexcept {
        static const ThreadSlot only;
        return only;
    }
};

} // namespace vlgs
