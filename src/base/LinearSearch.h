// SPDX-License-Identifier: MIT
// Finds one text again and again in others, by the method of Knuth, Morris and Pratt: linear however they
// look.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace vlgs {

/// `UnitAt` gives the unit of a searched text at a place, in the form that `Find`, a text to be found, has
/// its units in. REQUIRES: `find` is not empty.
template <class Find, char16_t (*UnitAt)(std::u16string_view, std::size_t)>
class LinearSearch {
  public:
    explicit LinearSearch(Find find) : find_(std::move(find)), overlap_(std::u16string_view(find_).size()) {
        for (std::size_t i = 1; i < overlap_.size(); ++i)
            overlap_[i] = static_cast<std::uint32_t>(advance(overlap_[i - 1], units()[i]));
    }

    /// The first place at or behind `from`, npos where there is none.
    std::size_t in(std::u16string_view text, std::size_t from) const noexcept {
        std::size_t matched = 0;
        for (std::size_t at = from; at < text.size(); ++at) {
            matched = advance(matched, UnitAt(text, at));
            if (matched == overlap_.size())
                return at + 1 - matched;
        }
        return text.npos;
    }

  private:
    std::u16string_view units() const noexcept { return find_; }
    std::size_t advance(std::size_t matched, char16_t unit) const noexcept {
        while (matched > 0 && units()[matched] != unit)
            matched = overlap_[matched - 1];
        return units()[matched] == unit ? matched + 1 : 0;
    }

    Find find_;
    // For each beginning of the text: the length of its longest proper beginning that is also its end.
    std::vector<std::uint32_t> overlap_;
};

} // namespace vlgs
