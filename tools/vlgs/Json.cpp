// SPDX-License-Identifier: MIT
#include "Json.h"

#include "HostText.h"
#include "base/Ascii.h"

#include <ostream>

namespace vlgs::cli {

namespace {

void writeText(std::ostream& out, std::u16string_view text) {
    out << '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const bool pair = c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
                          text[i + 1] <= 0xDFFF;
        if (c == u'"' || c == u'\\') {
            out << '\\' << static_cast<char>(c);
        } else if (pair) {
            out << String(text.substr(i++, 2)).toUtf8();
        } else if (c < 0x20 || c == 0x7F || (c >= 0xD800 && c <= 0xDFFF)) {
            out << "\\u";
            for (int shift = 12; shift >= 0; shift -= 4)
                out << static_cast<char>(ascii::lowerHexDigits[c >> shift & 15]);
        } else {
            out << String(1, c).toUtf8();
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
