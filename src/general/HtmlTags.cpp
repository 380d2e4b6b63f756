#include "general/HtmlTags.h"

#include "automation/CaseFold.h"

namespace vlgs {

namespace {

constexpr std::u16string_view lineBreak = u"\r\n";
constexpr std::u16string_view emptyLine = u"\r\n\r\n";

// The first prefix that fits decides.
constexpr TagRule rules[] = {
    {u"<head", TagAction::SkipElement, u"</head>"},
    {u"<script", TagAction::SkipElement, u"</script>"},
    {u"<style", TagAction::SkipElementButLast, u"</style>"},
    {u"<pre", TagAction::EnterPreformatted, {}},
    {u"</pre", TagAction::LeavePreformatted, {}},
    {u"</tr", TagAction::Write, u" | \r\n"},
    {u"</p", TagAction::Write, emptyLine},
    {u"</ul", TagAction::Write, emptyLine},
    {u"</ol", TagAction::Write, emptyLine},
    {u"</", TagAction::Write, {}},
    {u"<!", TagAction::Write, {}},
    {u"<img", TagAction::WriteAttribute, u"src=\""},
    {u"<a", TagAction::WriteAttribute, u"href=\""},
    {u"<br", TagAction::Write, lineBreak},
    {u"<td", TagAction::Write, u" | "},
    {u"<p", TagAction::Write, lineBreak},
    {u"<dd", TagAction::Write, u"\r\n  *"},
    {u"<dt", TagAction::Write, u"\t"},
    {u"<li", TagAction::Write, u"\r\n*"},
    {u"<hr", TagAction::Write, u"\r\n--------------------------------------------------------\r\n"},
};
constexpr TagRule otherTag{u"<", TagAction::Write, {}};

bool skipsElement(const TagRule& rule) noexcept {
    return rule.action == TagAction::SkipElement || rule.action == TagAction::SkipElementButLast;
}

} // namespace

const TagRule& ruleOfTag(std::u16string_view html) noexcept {
    constexpr auto caseBit = 0x20;
    if (html.size() > 1)
        for (const auto& rule : rules)
            if ((html[1] | caseBit) == (rule.prefix[1] | caseBit) &&
                equalIgnoringCase(html.substr(0, rule.prefix.size()), rule.prefix))
                return rule;
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
