// SPDX-License-Identifier: MIT
// What the tags of an HTML text do to its plain text, and where they end.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vlgs {

enum class TagAction {
    /// Skip to behind the end tag `text`; to the end of the whole text when there is none.
    SkipElement,
    /// The same, but the last character of a text without end tag is left.
    SkipElementButLast,
    EnterPreformatted,
    LeavePreformatted,
    /// Write `text`.
    Write,
    /// Write the value behind `text`, an attribute name with "=" and a quotation mark, in square brackets.
    WriteAttribute,
};

struct TagRule {
    /// Compared without regard to case, and only with the beginning: "<a" serves "<abbr" too.
    std::u16string_view prefix;
    TagAction action;
    std::u16string_view text;
};

/// The rule for the tag at the beginning of a text. REQUIRES: the text begins with "<".
const TagRule& ruleOfTag(std::u16string_view html) noexcept;

/// Finds where tags end: behind the ">" that closes them, pairs of "<" and ">" inside counted, or at the end
/// of the text.
///
/// Elements are skipped from inside their own start tag, so the same stretch may be asked about again and
/// again. The ends of the start tags inside a stretch are therefore noted when it is first read, and all
/// calls of `endOfElementTag` together take time linear in the text. They must come in the order of the text.
class TagEnds {
  public:
    explicit TagEnds(std::u16string_view html) noexcept : html_(html) {}

    std::size_t endOf(std::size_t begin) const noexcept;
    /// For tags with an action that skips an element.
    std::size_t endOfElementTag(std::size_t begin);

  private:
    struct Tag {
        std::size_t begin;
        std::size_t end;
    };
    void read(std::size_t begin);

    std::u16string_view html_;
    std::vector<Tag> noted_; // the element tags in the stretch up to notedEnd_
    std::size_t notedEnd_ = 0;
    std::size_t next_ = 0;
};

} // namespace vlgs
