// SPDX-License-Identifier: MIT
// Gives texts that occur again and again one block of memory, as key names do from section to section.
#pragma once

#include "base/String.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace vlgs {

class SharedTexts {
  public:
    /// `text`, as `make()` gives it unless a recent text is the same; a byte stands for itself below 128.
    template <class Unit, class Make>
    const String& share(std::basic_string_view<Unit> text, Make&& make) {
        if (recent_.empty())
            recent_.resize(slots);
        String& slot = recent_[slotOf(text)];
        if (!isSame(slot, text))
            slot = make();
        return slot;
    }

  private:
    static constexpr std::size_t slots = 1024;

    // Names that follow one another mostly differ in their last few characters.
    template <class Unit>
    static std::size_t slotOf(std::basic_string_view<Unit> text) {
        std::size_t hash = text.size();
        for (const Unit unit : text.substr(text.size() - std::min<std::size_t>(text.size(), 8)))
            hash = hash * 31 + static_cast<std::size_t>(unit);
        return hash % slots;
    }

    template <class Unit>
    static bool isSame(const String& known, std::basic_string_view<Unit> text) {
        const auto same = [](char16_t a, Unit b) {
            if constexpr (sizeof(Unit) == 1)
                return a == static_cast<unsigned char>(b) && a < 0x80;
            else
                return a == b;
        };
        return known.length() == text.size() && std::equal(known.begin(), known.end(), text.begin(), same);
    }

    std::vector<String> recent_;
};

} // namespace vlgs
