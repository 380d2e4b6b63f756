// SPDX-License-Identifier: MIT
#include "general/HtmlText.h"

#include <gtest/gtest.h>

#include <string>

namespace vlgs {
namespace {

String textOf(std::u16string_view html) {
    return g_HTMLtoText(html, false);
}

TEST(HtmlText, IsMadeOfTagsEntitiesAndBlanks) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        // tags become their texts
        {u"", u""},
        {u"<p>Hello&nbsp;&nbsp;World</p>", u"\r\nHello  World\r\n\r\n"},
        {u"<UL><LI>One<li>Two</ul>", u"\r\n*One\r\n*Two\r\n\r\n"},
        {u"<table><tr><td>A<td>B</tr></table>", u" | A | B | \r\n"},
        {u"<ol></ol><dl><dt>t<dd>d</dl>", u"\r\n\r\n\tt\r\n  *d"},
        {u"a<br>b<BR/>c<br />d", u"a\r\nb\r\nc\r\nd"},
        {u"<hr>", u"\r\n--------------------------------------------------------\r\n"},
        {u"<html><body><div><b>x</b></div><th>y</body></html>", u"xy"},
        {u"<param>a</track>b<header>gone</head>c", u"\r\na | \r\nbbc"},
        {u"a<!DOCTYPE html>b<!-- c -->d", u"abd"},
        {u"a<!-- c > d -->e", u"a d -->e"},
        {u"a<!-- <b>c</b> --> d", u"a d"}, // pairs inside a tag belong to it
        {u"a<b", u"a"},
        {u"a<", u"a"},
        {u"a<<b>c", u"a"}, // not balanced: the tag runs to the end
        {u"a>b", u"a>b"},
        // images and links show their source
        {u"<img src=\"pic.gif\">", u"[pic.gif]"},
        {u"<IMG alt=\"x\" SRC=\"pic.gif\" width=\"3\">", u"[pic.gif]"},
        {u"<a href=\"x.htm\">link</a>", u"[x.htm]link"},
        {u"<abbr href=\"x\">", u"[x]"},
        {u"<a href=\"\">", u"[]"},
        {u"<a href='x'>1<a href=x>2<a>3<a name=\"href=\">4", u"1234"},
        {u"<img src=\"open>x", u"x"},
        {u"<img src =\"a\" data-src=\"b\">", u"[b]"},
        {u"<a href=\"a<b>c\">", u"[a<b>c]"},
        {u"\"<a href=\"x\"", u"\"[x]"},
        // entities become their characters
        {u"&amp;&lt;&gt;&quot;&reg;&trade;&copy;", u"&<>\"(R)(TM)(C)"},
        {u"&AMP;&Amp;&euro;&@;", u""},
        {u"&#169;", u"169;"},
        {u"AT&T rocks", u"ATrocks"},
        {u"&amp<b>", u"&b>"},
        {u"a &amp;nbsp; b", u"a &nbsp; b"},
        {u"a&", u"a"},
        {u"a&amp", u"a&"},
        {u"a&unknown", u"a"},
        {u"a&lt", u"a<"},
        // blanks are collapsed outside preformatted text
        {u"a  \t  b", u"a b"},
        {u"  a  ", u" a "},
        {u"\ta\r\rb \rc", u" a b c"},
        {u"a\r\nb", u"a \nb"},
        {u"a \n b", u"a \n b"},
        {u"a <b> </b> b", u"a b"}, // tags do not end a run of blanks
        {u"a &nbsp; b", u"a  b"},  // nor do entities
        {u"a\u00A0 \u00A0b", u"a\u00A0 \u00A0b"},
        {u"<pre>a  \t b\r\n</pre>  c", u"a  \t b\r\n\n c"},
        {u"a <pre>  </pre> b", u"a     b"}, // and preformatted text leaves the state alone
        // the piece before a skipped element is repeated
        {u"<HEAD><TITLE>T</TITLE></HEAD>Body", u"Body"},
        {u"ab<pre>x</pre>", u"abbxx"},
        {u"x<script>s</script>y", u"xxy"},
        {u"x<script src=\"a\"/>y</script>z", u"xyz"},
        {u"x&copy;<style>s</STYLE>y", u"x(C)(C)y"},
        {u"<img src=\"p\"><pre></pre>y", u"[p][p][p]y"},
        {u"x<style>abc", u"xxc"},
        {u"x<script>abc", u"xx"},
        {u"x<head>abc", u"xx"},
        {u"x<style>ab<", u"xx"},
        {u"x<head a</head>b>c", u"xxb>c"}, // the end tag is looked for from the tag's own beginning
        {u"x<head <head/>", u"x"},
    };
    for (const auto& [html, text] : cases)
        EXPECT_EQ(textOf(html).toUtf8(), String(text).toUtf8()) << String(html).toUtf8();
}

TEST(HtmlText, AttributesOfTagsBeyondSixteenBitPositionsGiveNothing) {
    const auto tag = [](std::size_t length) {
        return std::u16string(u"<a href=\"x\" ").append(length - 13, u'y').append(u">");
    };
    EXPECT_EQ(textOf(tag(32767)), u"[x]");
    EXPECT_EQ(textOf(tag(32768) + u"z"), u"z");
}

TEST(HtmlText, ScriptsAloneAreRemoved) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"a<script>x</script>b&amp;", u"ab&amp;"},
        {u"a  <p><SCRIPT type=x>y</Script> b", u"a  <p> b"},
        {u"a<script/>b<script>c</script>d", u"ad"},
        {u"a<script>b", u"a"},
        {u"a<scrip", u"a<scrip"},
        {u"<script></script>", u""},
        {u"<script></script><script></script>x", u"x"},
    };
    for (const auto& [html, text] : cases)
        EXPECT_EQ(g_HTMLtoText(html, true), text) << String(html).toUtf8();
    const String script = u"<script>s</script><b>";
    for (const Variant& fully : {Variant(false), Variant(std::int32_t{0}), Variant(), Variant(missing)})
        EXPECT_EQ(g_HTMLtoText(script, fully), u"");
    for (const Variant& scripts : {Variant(true), Variant(std::int32_t{7}), Variant(null), Variant(u"no")})
        EXPECT_EQ(g_HTMLtoText(script, scripts), u"<b>");
}

std::u16string repeated(std::u16string_view text, std::size_t count) {
    std::u16string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

// Each of these takes minutes, and more time than a test is given, where anything is read again for every
// tag.
TEST(HtmlText, HostileTextsTakeLinearTime) {
    constexpr std::size_t count = 300'000;
    const std::u16string texts[] = {
        repeated(u"<", 2 * count),
        repeated(u"<head", count),
        repeated(u"<head </head>", count),
        repeated(u"<head </head>", count) + repeated(u">", count),
        repeated(u"<style <x></style>", count),
        repeated(u"<script", count) + repeated(u"</script>", count),
        repeated(u"<a \"", count),
        repeated(u"&a", count),
        repeated(u"<pre", count) + repeated(u">", count),
    };
    for (const auto& text : texts) {
        textOf(text);
        g_HTMLtoText(text, true);
    }
}

} // namespace
} // namespace vlgs
