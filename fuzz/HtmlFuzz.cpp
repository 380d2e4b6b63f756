// SPDX-License-Identifier: MIT
// The HTML conversion against a plain one that reads every tag anew and looks at one character at a time.
// Covers: general/Html*
#include "base/CaseFold.h"
#include "general/HtmlText.h"

#include <cstdlib>
#include <iterator>
#include <string>

namespace {

using Text = std::u16string;
using View = std::u16string_view;

// Bytes from 0x80 on stand for these, so that random input has tags in it.
constexpr View fragments[] = {
    u"<head",  u"<HEAD>", u"</head>", u"<script", u"</Script>", u"<style>", u"</style>", u"<pre>",
    u"</pre>", u"<p>",    u"</p>",    u"<a ",     u"<img ",     u"href=\"", u"src=\"",   u"/>",
    u"&amp;",  u"&nbsp",  u"</tr>",   u"<td",     u"<li>",      u"<dd>",    u"</ul",     u"<hr",
};

Text expand(const std::uint8_t* data, std::size_t size) {
    Text html;
    for (std::size_t i = 0; i < size; ++i)
        if (data[i] < 0x80)
            html += static_cast<char16_t>(data[i]);
        else
            html += fragments[data[i] % std::size(fragments)];
    return html;
}

bool startsWith(View text, View prefix) {
    return vlgs::equalIgnoringCase(text.substr(0, prefix.size()), prefix);
}

Text readTag(View html, std::size_t at) {
    int depth = 0;
    auto end = at;
    do {
        depth += html[end] == u'<' ? 1 : html[end] == u'>' ? -1 : 0;
        ++end;
    } while (end < html.size() && depth > 0);
    return Text(html.substr(at, end - at));
}

Text attribute(const Text& tag, View name) {
    const auto found = vlgs::findIgnoringCase(tag, name);
    const auto close = found == View::npos ? found : tag.find(u'"', found + name.size());
    if (close == View::npos || tag.size() > 32767)
        return {};
    return u"[" + tag.substr(found + name.size(), close - found - name.size()) + u"]";
}

Text translate(const Text& tag) {
    if (startsWith(tag, u"</tr"))
        return u" | \r\n";
    if (startsWith(tag, u"</p") || startsWith(tag, u"</ul") || startsWith(tag, u"</ol"))
        return u"\r\n\r\n";
    if (startsWith(tag, u"</") || startsWith(tag, u"<!"))
        return {};
    if (startsWith(tag, u"<img"))
        return attribute(tag, u"src=\"");
    if (startsWith(tag, u"<a"))
        return attribute(tag, u"href=\"");
    if (startsWith(tag, u"<td"))
        return u" | ";
    if (startsWith(tag, u"<br") || startsWith(tag, u"<p"))
        return u"\r\n";
    if (startsWith(tag, u"<dd"))
        return u"\r\n  *";
    if (startsWith(tag, u"<dt"))
        return u"\t";
    if (startsWith(tag, u"<li"))
        return u"\r\n*";
    if (startsWith(tag, u"<hr"))
        return u"\r\n" + Text(56, u'-') + u"\r\n";
    return {};
}

Text entity(const Text& name) {
    constexpr View names[] = {u"nbsp", u"amp", u"lt", u"gt", u"quot", u"reg", u"trade", u"copy"};
    constexpr View texts[] = {u" ", u"&", u"<", u">", u"\"", u"(R)", u"(TM)", u"(C)"};
    for (std::size_t i = 0; i < std::size(names); ++i)
        if (names[i] == name)
            return Text(texts[i]);
    return {};
}

Text convertPlainly(View html) {
    Text out, piece;
    bool pre = false, blank = false;
    for (std::size_t at = 0; at < html.size(); out += piece) {
        const char16_t character = html[at];
        if (character == u'<') {
            const Text tag = readTag(html, at);
            const bool style = startsWith(tag, u"<style");
            const View end = style                         ? u"</style>"
                             : startsWith(tag, u"<head")   ? u"</head>"
                             : startsWith(tag, u"<script") ? u"</script>"
                                                           : u"";
            if (!end.empty() && !tag.ends_with(u"/>")) {
                const auto found = vlgs::findIgnoringCase(html, end, at);
                at = found != View::npos ? found + end.size() : html.size() - (style ? 1 : 0);
                continue;
            }
            if (!end.empty())
                piece.clear();
            else if (startsWith(tag, u"<pre") || startsWith(tag, u"</pre"))
                pre = startsWith(tag, u"<pre");
            else
                piece = translate(tag);
            at += tag.size();
        } else if (character == u'&') {
            auto end = at + 1;
            while (end < html.size() &&
                   ((html[end] >= u'a' && html[end] <= u'z') || (html[end] >= 64 && html[end] <= 90)))
                ++end;
            piece = entity(Text(html.substr(at + 1, end - at - 1)));
            at = end + 1;
        } else {
            piece = Text(1, character);
            if (!pre && (character == u' ' || character == u'\t' || character == u'\r')) {
                piece = blank ? u"" : u" ";
                blank = true;
            } else if (!pre) {
                blank = false;
            }
            ++at;
        }
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Text html = expand(data, size);
    if (vlgs::g_HTMLtoText(html, false) != View(convertPlainly(html)))
        std::abort();
    vlgs::g_HTMLtoText(html, true);
    return 0;
}
