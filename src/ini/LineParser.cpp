// SPDX-License-Identifier: MIT
#include "ini/LineParser.h"

#include "base/Text.h"
#include "ini/FreshKeys.h"

namespace vlgs {

namespace {

std::string_view trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

} // namespace

void LineParser::parse(std::u16string_view line) {
    const auto equals = hasSection_ ? line.find(u'=') : line.npos;
    if (equals == line.npos)
        return parseHeader(line);
    setKey(trim(line.substr(0, equals)), line.substr(equals + 1));
}

void LineParser::parse(std::string_view line, const CodePage& page) {
    if (!isAscii(line))
        return parse(page.decode(line).view());
    const auto equals = hasSection_ ? line.find('=') : line.npos;
    if (equals != line.npos)
        setKey(trimBlanks(line.substr(0, equals)), line.substr(equals + 1));
    else if (line.find('[') != line.npos)
        parseHeader(page.decode(line));
}

void LineParser::setKey(StoredText name, StoredText value) {
    if (fresh_ && name.length() > 0) {
        fresh_->set(name, value);
        return;
    }
    const auto makeName = [&] { return name.toString(); };
    INIFile::createKeyIn(current_,
                         name.visit([&](auto text) { return arena_->names().share(text, makeName); }),
                         value.toString());
}

void LineParser::parseHeader(std::u16string_view line) {
    const auto open = line.find(u'[');
    if (open == line.npos)
        return;
    const auto close = line.find(u']', open);
    if (close == line.npos)
        return;
    const auto name = trim(line.substr(open + 1, close - open - 1));
    fresh_ = name.empty() ? nullptr : document_.freshSection(name, arena_);
    if (!fresh_) {
        current_ = document_.keyPlaceOf(*document_.CreateSection(name));
        if (current_.add && current_.lookUp == current_.add)
            fresh_ = current_.add->freshKeysIn(arena_);
    }
    hasSection_ = true;
}

} // namespace vlgs
