// SPDX-License-Identifier: MIT
#include "Json.h"

#include "HostText.h"
#include "base/Ascii.h"

#include <ostream>

namespace vlgs::cli {

namespace {

bool isPair(std::u16string_view text) {
    return text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 &&
           text[1] <= 0xDFFF;
}

// Characters at the beginning of a text that stand in JSON as they are.
std::size_t plainLength(std::u16string_view text) {
    std::size_t length = 0;
    while (length < text.size()) {
        const char16_t c = text[length];
        if (isPair(text.substr(length)))
            length += 2;
        else if (c < 0x20 || c == 0x7F || c == u'"' || c == u'\\' || (c >= 0xD800 && c <= 0xDFFF))
            break;
        else
            ++length;
    }
    return length;
}

void writeEscape(std::ostream& out, char16_t c) {
    if (c == u'"' || c == u'\\') {
        out << '\\' << static_cast<char>(c);
        return;
    }
    out << "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out << static_cast<char>(ascii::lowerHexDigits[c >> shift & 15]);
}

void writeText(std::ostream& out, std::u16string_view text) {
    out << '"';
    while (!text.empty()) {
        const auto plain = plainLength(text);
        out << String(text.substr(0, plain)).toUtf8();
        text.remove_prefix(plain);
        if (!text.empty()) {
            writeEscape(out, text.front());
            text.remove_prefix(1);
        }
    }
    out << '"';
}

} // namespace

void Json::separate() {
    if (named_) {
        named_ = false;
    } else if (!hasEntries_.empty()) {
        if (hasEntries_.back())
            out_ << (layout_ == Layout::Entries && hasEntries_.size() == 1 ? ",\n " : ", ");
        hasEntries_.back() = true;
    }
}

void Json::open(char bracket) {
    separate();
    out_ << bracket;
    hasEntries_.push_back(false);
}

void Json::close(char bracket) {
    hasEntries_.pop_back();
    out_ << bracket;
}

void Json::name(std::u16string_view name) {
    value(name);
    out_ << ": ";
    named_ = true;
}

void Json::name(std::string_view utf8) {
    name(fromHost(utf8));
}

void Json::value(std::u16string_view text) {
    separate();
    writeText(out_, text);
}

void Json::value(std::string_view utf8) {
    value(fromHost(utf8));
}

void Json::raw(std::string_view digits) {
    separate();
    out_ << digits;
}

void Json::end() {
    out_ << '\n';
}

} // namespace vlgs::cli
