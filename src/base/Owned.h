// SPDX-License-Identifier: MIT
// Resources of the host, owned by types: an alias for each kind says what closes it and which value is none.
//
//     inline void closeHandle(HANDLE handle) noexcept { CloseHandle(handle); }
//     using Handle = Owned<HANDLE, &closeHandle, -1>;
#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace vlgs {

template <class T, auto close, std::intptr_t noneNumber = 0>
class Owned {
  public:
    Owned() noexcept = default;
    explicit Owned(T value) noexcept : value_(value) {}
    Owned(Owned&& other) noexcept : value_(other.detach()) {}
    Owned& operator=(Owned&& other) noexcept {
        Owned(std::move(other)).swap(*this);
        return *this;
    }
    ~Owned() {
        if (*this)
            close(value_);
    }
    void swap(Owned& other) noexcept { std::swap(value_, other.value_); }

    explicit operator bool() const noexcept { return value_ != none(); }
    T get() const noexcept { return value_; }
    /// Gives the resource away; the caller owes its end.
    T detach() noexcept { return std::exchange(value_, none()); }
    void reset() noexcept { Owned().swap(*this); }

  private:
    static T none() noexcept {
        if constexpr (std::is_pointer_v<T>)
            return std::bit_cast<T>(noneNumber);
        else
            return static_cast<T>(noneNumber);
    }

    T value_ = none();
};

} // namespace vlgs
