// SPDX-License-Identifier: MIT
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/RegistryText.h"
#include "platform/RegistryTextForm.h"

#include <algorithm>
#include <utility>

namespace vlgs {

namespace {

constexpr auto none = std::u16string_view::npos;

bool isBlank(char16_t character) noexcept {
    return character == u' ' || character == u'\t';
}
bool isLineEnd(char16_t character) noexcept {
    return character == u'\r' || character == u'\n';
}

std::u16string decodeKeyNames(std::u16string_view path) {
    std::u16string names;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t next = i + 1 < path.size() ? path[i + 1] : u'\0';
        const bool escape =
            path[i] == keyNameEscape && (next == u'n' || next == u'r' || next == keyNameEscape);
        if (escape)
            ++i;
        names += !escape ? path[i] : next == u'n' ? u'\n' : next == u'r' ? u'\r' : keyNameEscape;
    }
    return names;
}

class Reader {
  public:
    Reader(std::u16string_view text, bool isOldForm, RegistryChanges& changes)
        : text_(text), isOldForm_(isOldForm), changes_(changes) {}

    RegistryTextPlaces read();

  private:
    bool atEnd() const noexcept { return at_ >= text_.size(); }
    bool at(char16_t character) const noexcept { return !atEnd() && text_[at_] == character; }
    bool take(char16_t character) noexcept;
    bool take(std::u16string_view word) noexcept;
    void skipBlanks() noexcept;
    void skipLine() noexcept;
    /// Behind what a line says there may be blanks and a comment.
    bool atLineEnd() noexcept;

    bool readAddition();
    void readKey();
    void readValue();
    bool readValueLines();
    std::optional<std::u16string> readQuoted();
    std::optional<RegistryData> readData();
    std::optional<std::uint32_t> readNumber();
    bool readBytes(std::string& bytes);

    std::u16string_view text_;
    bool isOldForm_;
    RegistryChanges& changes_;
    /// Whether there is a key for values.
    bool hasKey_ = false;
    std::size_t at_ = 0;
    std::size_t firstAddition_ = none;
    /// Up to here the lines are part of an addition that was looked at.
    std::size_t additionEnd_ = 0;
};

RegistryTextPlaces Reader::read() {
    while (!atEnd()) {
        if (at(u';')) {
            if (!readAddition())
                break;
        } else if (at(u'[')) {
            readKey();
        } else if (at(u'"') || at(u'@')) {
            readValue();
        } else if (at_ > 0 && !atLineEnd()) { // the first line is the heading
            changes_.misfit(at_);
        }
        skipLine();
    }
    return {at_, std::min(firstAddition_, at_)};
}

bool Reader::take(char16_t character) noexcept {
    if (!at(character))
        return false;
    ++at_;
    return true;
}

bool Reader::take(std::u16string_view word) noexcept {
    if (!equalIgnoringCase(text_.substr(at_, word.size()), word))
        return false;
    at_ += word.size();
    return true;
}

void Reader::skipBlanks() noexcept {
    while (!atEnd() && isBlank(text_[at_]))
        ++at_;
}

void Reader::skipLine() noexcept {
    while (!atEnd() && !isLineEnd(text_[at_]))
        ++at_;
    while (!atEnd() && (isLineEnd(text_[at_]) || isBlank(text_[at_])))
        ++at_;
}

bool Reader::atLineEnd() noexcept {
    skipBlanks();
    return atEnd() || isLineEnd(text_[at_]) || at(u';');
}

/// False for an addition that was not written to its end. One with a NUL in it is what a halted machine has
/// left, and is passed over.
bool Reader::readAddition() {
    const auto rest = text_.substr(at_);
    if (at_ < additionEnd_ || !isRegistryAddition(rest))
        return !registryAdditionMark.starts_with(rest);
    firstAddition_ = std::min(firstAddition_, at_);
    const auto end = text_.find(registryAdditionEnd, at_);
    if (end == none)
        return false;
    additionEnd_ = end + registryAdditionEnd.size();
    if (text_.substr(at_, end - at_).find(u'\0') != none)
        at_ = end;
    return true;
}

void Reader::readKey() {
    const auto start = at_;
    hasKey_ = false;
    const auto line = text_.substr(at_, text_.find_first_of(u"\r\n", at_) - at_);
    at_ += line.size();
    const auto end = line.rfind(u']');
    if (end == none)
        return changes_.misfit(start);
    const bool isDeleted = line.starts_with(u"[-");
    const auto first = isDeleted ? 2 : 1;
    const auto path = decodeKeyNames(line.substr(first, end - first));
    hasKey_ = !isDeleted;
    if (isDeleted)
        changes_.deletedKey(path);
    else
        changes_.key(path);
}

void Reader::readValue() {
    const auto start = at_;
    if (readValueLines())
        return;
    at_ = start; // and only the first line is passed over
    changes_.misfit(start);
}

bool Reader::readValueLines() {
    const auto start = at_;
    std::optional<std::u16string> name(std::in_place);
    if (!take(u'@'))
        name = readQuoted();
    skipBlanks();
    if (!name || !take(u'='))
        return false;
    skipBlanks();
    const bool isDeleted = take(u'-');
    auto data = isDeleted ? std::nullopt : readData();
    if ((!isDeleted && !data) || !atLineEnd())
        return false;
    if (!hasKey_)
        changes_.misfit(start);
    else if (isDeleted)
        changes_.deletedValue(*name);
    else
        changes_.value(*name, std::move(*data));
    return true;
}

/// A text between quotation marks; editors write line ends in it as they are, or as "\r" and "\n".
std::optional<std::u16string> Reader::readQuoted() {
    if (!take(u'"'))
        return std::nullopt;
    std::u16string text;
    for (; !atEnd() && text_[at_] != u'"'; ++at_) {
        if (text_[at_] != u'\\' || at_ + 1 == text_.size()) {
            text += text_[at_];
            continue;
        }
        switch (const char16_t next = text_[++at_]) {
        case u'n':
            text += u'\n';
            break;
        case u'r':
            text += u'\r';
            break;
        case u'0':
            text += u'\0';
            break;
        case u'\\':
        case u'"':
            text += next;
            break;
        default:
            text.append({u'\\', next});
        }
    }
    return take(u'"') ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<RegistryData> Reader::readData() {
    RegistryData data;
    if (at(u'"')) {
        const auto text = readQuoted();
        if (!text)
            return std::nullopt;
        data = {registryType::text, registryBytes(*text)};
        data.bytes.append(2, '\0');
        return data;
    }
    if (take(std::u16string_view(u"dword:"))) {
        skipBlanks();
        const auto number = readNumber();
        if (!number)
            return std::nullopt;
        data.type = registryType::number;
        for (int shift = 0; shift < 32; shift += 8)
            data.bytes += static_cast<char>(*number >> shift & 0xFF);
        return data;
    }
    if (!take(std::u16string_view(u"hex")))
        return std::nullopt;
    data.type = registryType::binary;
    if (take(u'(')) {
        const auto type = readNumber();
        if (!type || !take(u')'))
            return std::nullopt;
        data.type = *type;
    }
    if (!take(u':') || !readBytes(data.bytes))
        return std::nullopt;
    const bool isText = data.type == registryType::text || data.type == registryType::expandableText ||
                        data.type == registryType::multiText;
    if (isOldForm_ && isText)
        data.bytes = registryBytes(CodePage::system().decode(data.bytes));
    return data;
}

/// One to eight hexadecimal digits.
std::optional<std::uint32_t> Reader::readNumber() {
    std::uint32_t number = 0;
    int count = 0;
    for (int digit; !atEnd() && (digit = ascii::hexValue(text_[at_])) >= 0; ++at_, ++count)
        number = number << 4 | static_cast<std::uint32_t>(digit);
    return count >= 1 && count <= 8 ? std::optional(number) : std::nullopt;
}

/// Bytes separated by commas; a backslash at the end of a line carries them on to the next one.
bool Reader::readBytes(std::string& bytes) {
    for (;;) {
        skipBlanks();
        if (take(u'\\')) {
            skipBlanks();
            if (atEnd() || !isLineEnd(text_[at_]))
                return false;
            take(u'\r');
            take(u'\n');
            continue;
        }
        if (atLineEnd())
            return true;
        const auto byte = readNumber();
        if (!byte || *byte > 0xFF)
            return false;
        bytes += static_cast<char>(*byte);
        skipBlanks();
        if (!take(u',') && !at(u'\\'))
            return true;
    }
}

String decodeWithoutMark(std::string_view bytes) {
    if (bytes.size() >= 2 && bytes[1] == '\0')
        return registryText(bytes);
    const auto text = String::fromUtf8(bytes);
    const bool isOldForm = text.view().starts_with(oldRegistryHeading);
    return !isOldForm && text.toUtf8() == bytes ? text : CodePage::system().decode(bytes);
}

String decodeBigEndian(std::string_view bytes) {
    std::string swapped(bytes.substr(0, bytes.size() / 2 * 2));
    for (std::size_t i = 0; i < swapped.size(); i += 2)
        std::swap(swapped[i], swapped[i + 1]);
    return registryText(swapped);
}

} // namespace

bool isRegistryAddition(std::u16string_view text) {
    return text.starts_with(registryAdditionMark);
}

std::optional<RegistryFileText> decodeRegistryFile(std::string_view bytes) {
    RegistryFileText file;
    file.isUtf16 = bytes.starts_with(registryFileMark);
    if (file.isUtf16)
        file.text = registryText(bytes.substr(registryFileMark.size()));
    else if (bytes.starts_with("\xFE\xFF"))
        file.text = decodeBigEndian(bytes.substr(2));
    else if (bytes.starts_with("\xEF\xBB\xBF"))
        file.text = String::fromUtf8(bytes.substr(3));
    else
        file.text = decodeWithoutMark(bytes);
    const auto text = file.text.view();
    const auto heading = trimRight(text.substr(0, text.find_first_of(u"\r\n")));
    file.isOldForm = heading == oldRegistryHeading;
    if (!file.isOldForm && heading != registryHeading)
        return std::nullopt;
    return file;
}

RegistryTextPlaces readRegistryText(std::u16string_view text, bool isOldForm, RegistryChanges& changes) {
    return Reader(text, isOldForm, changes).read();
}

} // namespace vlgs
