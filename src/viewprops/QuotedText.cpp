// SPDX-License-Identifier: MIT
#include "viewprops/QuotedText.h"

#include "frame/Errors.h"

#include <algorithm>
#include <string>

namespace vlgs {

namespace {

constexpr char16_t source[] = u"VlGeneralServices.modViewProperties.TokenizeQuotedSubStrings_";

struct Escape {
    char16_t character;
    std::u16string_view token;
};
constexpr Escape escapes[] = {
    {u',', u"[~CM~]"}, {u'=', u"[~EQ~]"}, {u';', u"[~SC~]"}, {u'/', u"[~FS~]"},
    {u'(', u"[~OL~]"}, {u')', u"[~CL~]"}, {u'-', u"[~DH~]"},
};
constexpr std::size_t tokenLength = 6;

/// Where the quoted part that begins at `from` ends, behind its closing quote; npos when it does not.
std::size_t endOfQuoted(std::u16string_view text, std::size_t from, char16_t quote) {
    for (auto at = text.find(quote, from + 1); at != text.npos; at = text.find(quote, at + 2))
        if (at + 1 == text.size() || text[at + 1] != quote)
            return at + 1;
    return text.npos;
}

void appendTokenized(std::u16string& out, std::u16string_view part) {
    for (char16_t character : part) {
        const auto escape = std::ranges::find(escapes, character, &Escape::character);
        if (escape == std::end(escapes))
            out += character;
        else
            out += escape->token;
    }
}

String tokenize(const String& data, char16_t quote) {
    const std::u16string_view text = data;
    std::u16string out;
    std::size_t done = 0;
    for (auto from = text.find(quote); from != text.npos; from = text.find(quote, done)) {
        const auto end = endOfQuoted(text, from, quote);
        if (end == text.npos)
            raiseMessage(source, eMsg_QuotesNotEvenX, concat(u"Data= [", text, u"]"));
        out.append(text, done, from - done);
        appendTokenized(out, text.substr(from, end - from));
        done = end;
    }
    return done == 0 ? data : String(out.append(text, done));
}

} // namespace

String TokenizeQuotedSubStrings_(const String& sData, Quote eQuote) {
    try {
        return tokenize(sData, static_cast<char16_t>(eQuote));
    } catch (const std::bad_alloc&) {
        raiseMessage(source, eMsg_ErrorTokenizingQuotedSubStringsX,
                     Error(RunTimeError::OutOfMemory).description());
    }
}

String DecodeText_(std::u16string_view sData) {
    auto at = sData.find(u"[~");
    if (at == sData.npos)
        return sData;
    std::u16string out;
    std::size_t done = 0;
    for (; at != sData.npos; at = sData.find(u"[~", at)) {
        const auto escape = std::ranges::find(escapes, sData.substr(at, tokenLength), &Escape::token);
        if (escape == std::end(escapes)) {
            ++at;
            continue;
        }
        out.append(sData, done, at - done) += escape->character;
        done = at += tokenLength;
    }
    return out.append(sData, done);
}

} // namespace vlgs
