// SPDX-License-Identifier: MIT
#include "general/HtmlText.h"

#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "general/HtmlTags.h"

#include <limits>
#include <string>

namespace vlgs {

namespace {

constexpr auto npos = std::u16string_view::npos;

/// The first occurrence of a tag's beginning, in any case, at or after a position.
std::size_t findTag(std::u16string_view html, std::u16string_view tag, std::size_t from) {
    for (auto at = html.find(u'<', from); at != npos; at = html.find(u'<', at + 1))
        if (equalIgnoringCase(html.substr(at, tag.size()), tag))
            return at;
    return npos;
}

/// The value of an attribute, in brackets, or nothing. `attribute` ends with the quotation mark that opens
/// the value.
std::u16string bracketedValue(std::u16string_view tag, std::u16string_view attribute) {
    // Positions in a tag are 16-bit numbers; those of a longer tag are a failure.
    if (tag.size() > std::numeric_limits<std::int16_t>::max())
        return {};
    for (auto open = tag.find(u'"'); open != npos; open = tag.find(u'"', open + 1)) {
        const auto length = attribute.size();
        if (open + 1 < length || !equalIgnoringCase(tag.substr(open + 1 - length, length), attribute))
            continue;
        const auto close = tag.find(u'"', open + 1);
        if (close == npos)
            return {};
        return std::u16string(u"[").append(tag.substr(open + 1, close - open - 1)).append(u"]");
    }
    return {};
}

/// The text of an entity by its name; exact case. Nothing for other entities.
std::u16string_view entityText(std::u16string_view name) {
    struct Entity {
        std::u16string_view name;
        std::u16string_view text;
    };
    constexpr Entity entities[] = {{u"nbsp", u" "},     {u"amp", u"&"},   {u"lt", u"<"},
                                   {u"gt", u">"},       {u"quot", u"\""}, {u"reg", u"(R)"},
                                   {u"trade", u"(TM)"}, {u"copy", u"(C)"}};
    for (const auto& entity : entities)
        if (entity.name == name)
            return entity.text;
    return {};
}

/// The letters of entity names; "@" counts as one.
constexpr bool isEntityLetter(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'@' && character <= u'Z');
}

/// Sets of characters below 64.
constexpr std::uint64_t bit(char16_t character) {
    return std::uint64_t{1} << character;
}
constexpr std::uint64_t markup = bit(u'<') | bit(u'&');
constexpr std::uint64_t blanks = bit(u' ') | bit(u'\t') | bit(u'\r');

/// One scan from left to right. Each step writes a piece of output, a new one or once more the one before it.
class Conversion {
  public:
    Conversion(std::u16string_view html, std::u16string& out) : html_(html), tags_(html), out_(out) {}

    void run() {
        while (at_ < html_.size())
            step();
    }

  private:
    void step() {
        const char16_t character = html_[at_];
        if (character == u'<')
            tag();
        else if (character == u'&')
            entity();
        else if (isSpecialBlank(character))
            blank();
        else
            characters();
    }

    /// Blanks that are not copied as they are. In preformatted text there are none.
    bool isSpecialBlank(char16_t character) const {
        return !preformatted_ &&
               (character == u'\r' || character == u'\t' || (character == u' ' && lastWasBlank_));
    }

    void write(std::u16string_view piece) {
        piece_ = piece;
        out_ += piece;
    }
    void writeAgain() { out_ += piece_; }

    void tag() {
        const TagRule& rule = ruleOfTag(html_.substr(at_));
        switch (rule.action) {
        case TagAction::SkipElement:
            return element(rule.text, html_.size());
        case TagAction::SkipElementButLast:
            return element(rule.text, html_.size() - 1);
        case TagAction::EnterPreformatted:
        case TagAction::LeavePreformatted:
            preformatted_ = rule.action == TagAction::EnterPreformatted;
            at_ = tags_.endOf(at_);
            return writeAgain();
        case TagAction::Write:
            at_ = tags_.endOf(at_);
            return write(rule.text);
        case TagAction::WriteAttribute:
            const auto end = tags_.endOf(at_);
            attribute_ = bracketedValue(html_.substr(at_, end - at_), rule.text);
            at_ = end;
            write(attribute_);
        }
    }

    void element(std::u16string_view endTag, std::size_t withoutEndTag) {
        const auto end = tags_.endOfElementTag(at_);
        if (html_.substr(at_, end - at_).ends_with(u"/>")) {
            at_ = end;
            return write({});
        }
        const auto found = findTag(html_, endTag, at_);
        at_ = found == npos ? withoutEndTag : found + endTag.size();
        writeAgain();
    }

    void entity() {
        const auto name = at_ + 1;
        auto end = name;
        while (end < html_.size() && isEntityLetter(html_[end]))
            ++end;
        write(entityText(html_.substr(name, end - name)));
        at_ = end + 1; // the ";", or whatever stands in its place
    }

    void blank() {
        write(lastWasBlank_ ? std::u16string_view() : u" ");
        lastWasBlank_ = true;
        ++at_;
    }

    /// Copies characters as far as nothing special comes; the last of them is the piece.
    void characters() {
        const auto special = preformatted_ ? markup : markup | blanks;
        auto end = at_ + 1;
        while (end < html_.size()) {
            const char16_t character = html_[end];
            const bool isSpecial = character <= u'<' && (special >> character & 1) != 0;
            if (isSpecial && !(character == u' ' && html_[end - 1] != u' '))
                break;
            ++end;
        }
        if (!preformatted_)
            lastWasBlank_ = html_[end - 1] == u' ';
        out_ += html_.substr(at_, end - at_);
        piece_ = html_.substr(end - 1, 1);
        at_ = end;
    }

    std::u16string_view html_;
    TagEnds tags_;
    std::u16string& out_;
    std::u16string_view piece_;
    std::u16string attribute_; // what piece_ shows of the last image or link
    std::size_t at_ = 0;
    bool preformatted_ = false;
    bool lastWasBlank_ = false;
};

void removeScripts(std::u16string_view html, std::u16string& out) {
    constexpr std::u16string_view startTag = u"<script";
    constexpr std::u16string_view endTag = u"</script>";
    for (std::size_t at = 0;;) {
        const auto script = findTag(html, startTag, at);
        out += html.substr(at, script - at);
        if (script == npos)
            return;
        const auto end = findTag(html, endTag, script + startTag.size());
        if (end == npos)
            return;
        at = end + endTag.size();
    }
}

bool equalsFalse(const Variant& value) {
    try {
        return value.isMissing() || !toBoolean(value);
    } catch (const Error&) {
        return false;
    }
}

} // namespace

String g_HTMLtoText(std::u16string_view sSourceHTMLText, const Variant& bRemoveScriptOnly) {
    const bool whole = equalsFalse(bRemoveScriptOnly);
    std::u16string text;
    try {
        text.reserve(sSourceHTMLText.size());
        if (whole)
            Conversion(sSourceHTMLText, text).run();
        else
            removeScripts(sSourceHTMLText, text);
    } catch (const std::exception&) { // no memory for more
    }
    return text;
}

} // namespace vlgs
