// SPDX-License-Identifier: MIT
#include "base/Ascii.h"
#include "platform/RegistryText.h"
#include "platform/RegistryTextForm.h"

namespace vlgs {

namespace {

constexpr std::u16string_view lineEnd = u"\r\n";
/// Registry editors break lines of bytes here.
constexpr std::size_t lineLength = 80;

void appendHex(std::u16string& text, std::uint32_t number, int digitCount) {
    for (int shift = 4 * digitCount - 4; shift >= 0; shift -= 4)
        text += ascii::lowerHexDigits[number >> shift & 15];
}

/// A stored text without its final NUL; nothing for one that does not end in one, or that has characters
/// which do not go between quotation marks.
std::optional<String> plainText(const std::string& bytes) {
    if (bytes.size() < 2 || bytes.size() % 2 != 0)
        return std::nullopt;
    const String text = registryText(bytes);
    const auto length = text.view().find_first_of(std::u16string_view(u"\0\r\n", 3));
    if (length != text.length() - 1 || text[length] != u'\0')
        return std::nullopt;
    return String(text.view().substr(0, length));
}

std::uint32_t littleEndian(const std::string& bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

} // namespace

void RegistryTextWriter::key(std::u16string_view keyPath) {
    lines_ += u'[';
    path(keyPath);
}

void RegistryTextWriter::deletedKey(std::u16string_view keyPath) {
    lines_ += u"[-";
    path(keyPath);
}

void RegistryTextWriter::heading() {
    lines_.append(registryHeading).append(lineEnd);
    emptyLine();
}

void RegistryTextWriter::emptyLine() {
    lines_ += lineEnd;
}

void RegistryTextWriter::path(std::u16string_view path) {
    lines_ += registryHiveName(hive_);
    if (!path.empty())
        lines_ += u'\\';
    for (char16_t character : path) {
        if (character == u'\n' || character == u'\r' || character == keyNameEscape)
            lines_ += keyNameEscape;
        lines_ += character == u'\n' ? u'n' : character == u'\r' ? u'r' : character;
    }
    lines_.append(u"]").append(lineEnd);
}

void RegistryTextWriter::value(std::u16string_view valueName, const RegistryData& data) {
    const auto lineStart = lines_.size();
    name(valueName);
    const auto text = data.type == registryType::text ? plainText(data.bytes) : std::nullopt;
    if (text) {
        quoted(*text);
    } else if (data.type == registryType::number && data.bytes.size() == 4) {
        lines_ += u"dword:";
        appendHex(lines_, littleEndian(data.bytes), 8);
    } else {
        lines_ += u"hex";
        if (data.type != registryType::binary) {
            int digitCount = 1;
            while (digitCount < 8 && data.type >> (4 * digitCount) != 0)
                ++digitCount;
            lines_ += u'(';
            appendHex(lines_, data.type, digitCount);
            lines_ += u')';
        }
        lines_ += u':';
        hex(data.bytes, lineStart);
    }
    lines_ += lineEnd;
}

void RegistryTextWriter::deletedValue(std::u16string_view valueName) {
    name(valueName);
    lines_.append(u"-").append(lineEnd);
}

void RegistryTextWriter::name(std::u16string_view name) {
    if (name.empty())
        lines_ += u'@';
    else
        quoted(name);
    lines_ += u'=';
}

void RegistryTextWriter::quoted(std::u16string_view text) {
    lines_ += u'"';
    for (char16_t character : text)
        switch (character) {
        case u'\n':
            lines_ += u"\\n";
            break;
        case u'\r':
            lines_ += u"\\r";
            break;
        case u'\\':
        case u'"':
            lines_ += u'\\';
            [[fallthrough]];
        default:
            lines_ += character;
        }
    lines_ += u'"';
}

void RegistryTextWriter::hex(std::string_view bytes, std::size_t lineStart) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (lines_.size() - lineStart + 4 > lineLength) {
            lines_.append(u"\\").append(lineEnd);
            lineStart = lines_.size();
            lines_ += u"  ";
        }
        appendHex(lines_, static_cast<unsigned char>(bytes[i]), 2);
        if (i + 1 < bytes.size())
            lines_ += u',';
    }
}

std::string registryFileOf(std::u16string_view text) {
    return std::string(registryFileMark) + registryBytes(text);
}

std::u16string registryAddition(std::u16string_view lines) {
    std::u16string text(registryAdditionMark);
    text.append(lines).append(lineEnd);
    return text;
}

} // namespace vlgs
