// SPDX-License-Identifier: MIT
// A text as documents keep it until somebody asks for it: a byte for each character when all of them are
// ASCII, else UTF-16.
#pragma once

#include "base/CaseFold.h"
#include "base/String.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace vlgs {

template <class Unit>
bool isAscii(std::basic_string_view<Unit> text) noexcept {
    Unit bits = 0;
    for (const Unit unit : text)
        bits = static_cast<Unit>(bits | unit);
    return static_cast<std::make_unsigned_t<Unit>>(bits) < 0x80;
}

/// A view of such a text; who holds the characters lives longer.
class StoredText {
  public:
    StoredText() noexcept = default;
    /// REQUIRES: every byte is below 128.
    StoredText(std::string_view ascii) noexcept : start_(ascii.data()), length_(ascii.size()) {}
    StoredText(std::u16string_view text) noexcept
        : start_(text.data()), length_(text.size()), isWide_(true) {}

    std::size_t length() const noexcept { return length_; }

    /// Calls `use` with the text as std::string_view of ASCII or as std::u16string_view.
    template <class Use>
    decltype(auto) visit(Use&& use) const {
        if (isWide_)
            return use(std::u16string_view(static_cast<const char16_t*>(start_), length_));
        return use(std::string_view(static_cast<const char*>(start_), length_));
    }

    /// Writes the characters; gives where they end.
    template <class Unit>
    Unit* copyTo(Unit* to) const {
        return visit([&](auto text) {
            return std::transform(text.begin(), text.end(), to, [](auto c) { return static_cast<Unit>(c); });
        });
    }

    String toString() const {
        return String::build(length_, [&](char16_t* to) { copyTo(to); });
    }

  private:
    const void* start_ = nullptr;
    std::size_t length_ = 0;
    bool isWide_ = false;
};

inline bool equalIgnoringCase(StoredText a, StoredText b) noexcept {
    return a.visit([&](auto x) {
        return b.visit([&](auto y) {
            if constexpr (sizeof x[0] > sizeof y[0])
                return equalIgnoringCase(y, x);
            else
                return equalIgnoringCase(x, y);
        });
    });
}
inline std::uint64_t hashIgnoringCase(StoredText text) noexcept {
    return text.visit([](auto view) { return hashIgnoringCase(view); });
}

} // namespace vlgs
