// SPDX-License-Identifier: MIT
// The bytes of a file to be, gathered piece by piece.
#pragma once

#include "platform/LargePages.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>

namespace vlgs {

class FileBytes {
  public:
    /// With room for so many bytes; more are taken too.
    explicit FileBytes(std::size_t foreseen) { makeRoom(foreseen); }

    void append(std::string_view bytes) {
        if (bytes.size() > capacity_ - size_)
            makeRoom(std::max(size_ + bytes.size(), capacity_ * 2));
        bytes.copy(start_.get() + size_, bytes.size());
        size_ += bytes.size();
    }

    std::string_view view() const noexcept { return {start_.get(), size_}; }

  private:
    struct Free {
        void operator()(char* bytes) const noexcept { std::free(bytes); }
    };

    void makeRoom(std::size_t capacity) {
        capacity = std::max<std::size_t>(capacity, 256);
        std::unique_ptr<char, Free> larger(static_cast<char*>(allocateInLargePages(capacity)));
        if (!larger)
            throw std::bad_alloc();
        view().copy(larger.get(), size_);
        start_ = std::move(larger);
        capacity_ = capacity;
    }

    std::unique_ptr<char, Free> start_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace vlgs
