// SPDX-License-Identifier: MIT
#include "general/HtmlTags.h"

#include "base/CaseFold.h"

#include <array>
#include <cstdint>
#include <iterator>

namespace vlgs {

namespace {

constexpr std::u16string_view lineBreak = u"\r\n";
constexpr std::u16string_view emptyLine = u"\r\n\r\n";

// Rules whose prefixes share their second character stand together; of those the first that fits decides.
constexpr TagRule rules[] = {
    {u"<!", TagAction::Write, {}},
    {u"</pre", TagAction::LeavePreformatted, {}},
    {u"</tr", TagAction::Write, u" | \r\n"},
    {u"</p", TagAction::Write, emptyLine},
    {u"</ul", TagAction::Write, emptyLine},
    {u"</ol", TagAction::Write, emptyLine},
    {u"</", TagAction::Write, {}},
    {u"<a", TagAction::WriteAttribute, u"href=\""},
    {u"<br", TagAction::Write, lineBreak},
    {u"<dd", TagAction::Write, u"\r\n  *"},
    {u"<dt", TagAction::Write, u"\t"},
    {u"<head", TagAction::SkipElement, u"</head>"},
    {u"<hr", TagAction::Write, u"\r\n--------------------------------------------------------\r\n"},
    {u"<img", TagAction::WriteAttribute, u"src=\""},
    {u"<li", TagAction::Write, u"\r\n*"},
    {u"<pre", TagAction::EnterPreformatted, {}},
    {u"<p", TagAction::Write, lineBreak},
    {u"<script", TagAction::SkipElement, u"</script>"},
    {u"<style", TagAction::SkipElementButLast, u"</style>"},
    {u"<td", TagAction::Write, u" | "},
};
constexpr TagRule otherTag{u"<", TagAction::Write, {}};

/// A cheap test that equal characters pass and few others.
constexpr bool mayBeEqual(char16_t a, char16_t b) {
    constexpr auto caseBit = 0x20;
    return (a | caseBit) == (b | caseBit);
}

/// For each ASCII character: where the rules begin that have it as second character.
constexpr auto firstRules = [] {
    std::array<std::uint8_t, 128> first{};
    for (std::size_t character = 0; character < first.size(); ++character) {
        std::uint8_t rule = 0;
        while (rule < std::size(rules) &&
               !mayBeEqual(rules[rule].prefix[1], static_cast<char16_t>(character)))
            ++rule;
        first[character] = rule;
    }
    return first;
}();

bool skipsElement(const TagRule& rule) noexcept {
    return rule.action == TagAction::SkipElement || rule.action == TagAction::SkipElementButLast;
}

} // namespace

const TagRule& ruleOfTag(std::u16string_view html) noexcept {
    if (html.size() < 2 || html[1] >= firstRules.size())
        return otherTag;
    for (std::size_t i = firstRules[html[1]]; i < std::size(rules); ++i) {
        const auto prefix = rules[i].prefix;
        if (!mayBeEqual(html[1], prefix[1]))
            break;
        if (html.size() >= prefix.size() && mayBeEqual(html[prefix.size() - 1], prefix.back()) &&
            equalIgnoringCase(html.substr(0, prefix.size()), prefix))
            return rules[i];
    }
    return otherTag;
}

std::size_t TagEnds::endOf(std::size_t begin) const noexcept {
    std::size_t depth = 0;
    for (auto at = begin; at < html_.size(); ++at) {
        if (html_[at] == u'<')
            ++depth;
        else if (html_[at] == u'>' && --depth == 0)
            return at + 1;
    }
    return html_.size();
}

std::size_t TagEnds::endOfElementTag(std::size_t begin) {
    if (begin >= notedEnd_)
        read(begin);
    while (noted_[next_].begin < begin)
        ++next_;
    return noted_[next_].end;
}

void TagEnds::read(std::size_t begin) {
    struct OpenTag {
        std::size_t number;
        std::size_t depth;
    };
    std::vector<OpenTag> open;
    noted_.clear();
    next_ = 0;
    notedEnd_ = html_.size();
    std::size_t depth = 0;
    for (auto at = begin; at < html_.size(); ++at) {
        if (html_[at] == u'<') {
            ++depth;
            if (skipsElement(ruleOfTag(html_.substr(at)))) {
                open.push_back({noted_.size(), depth});
                noted_.push_back({at, html_.size()});
            }
        } else if (html_[at] == u'>') {
            if (!open.empty() && open.back().depth == depth) {
                noted_[open.back().number].end = at + 1;
                open.pop_back();
            }
            if (--depth == 0) {
                notedEnd_ = at + 1;
                return;
            }
        }
    }
}

} // namespace vlgs
