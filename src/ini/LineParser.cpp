#include "ini/LineParser.h"

#include "base/Text.h"

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
    const auto name = trim(line.substr(0, equals));
    INIFile::createKeyIn(current_, names_.share(name, [&] { return String(name); }), line.substr(equals + 1));
}

void LineParser::parse(std::string_view line, const CodePage& page) {
    const auto equals = hasSection_ ? line.find('=') : line.npos;
    if (equals == line.npos) {
        if (line.find('[') != line.npos)
            parseHeader(page.decode(line));
        return;
    }
    const auto name = trimBlanks(line.substr(0, equals));
    INIFile::createKeyIn(current_, names_.share(name, [&] { return page.decode(name); }),
                         page.decode(line.substr(equals + 1)));
}

void LineParser::parseHeader(std::u16string_view line) {
    const auto open = line.find(u'[');
    if (open == line.npos)
        return;
    const auto close = line.find(u']', open);
    if (close == line.npos)
        return;
    const auto section =
        document_.CreateSection(trim(line.substr(open + 1, close - open - 1)), missing, missing);
    current_ = document_.keyPlaceOf(*section);
    hasSection_ = true;
}

bool LineParser::bytewise(const CodePage& page) noexcept {
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte)
        if (page.isLeadByte(static_cast<unsigned char>(byte)))
            return false;
    return true;
}

} // namespace vlgs
