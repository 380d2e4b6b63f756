// SPDX-License-Identifier: MIT
// Code pages of the operating system. What it tells of a page is read once and never changes.
#include "platform/CodePage.h"

#include "platform/windows/Host.h"

#include <array>
#include <map>
#include <mutex>

namespace vlgs {

using namespace windows;

struct CodePage::Data {
    unsigned number = 0;
    bool isDoubleByte = false;
    std::array<bool, 256> isLead{};
    std::array<char16_t, 256> characters{}; // of the single bytes
    char16_t substitute = u'?';
};

namespace {

constexpr bool isUtf8(unsigned number) {
    return number == CP_UTF8;
}

std::u16string decodeBytes(unsigned page, std::string_view bytes) {
    std::u16string result(bytes.size(), u'\0'); // no byte gives more than one character
    if (bytes.empty())
        return result;
    const int length =
        MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()),
                            reinterpret_cast<wchar_t*>(result.data()), static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(length > 0 ? length : 0));
    return result;
}

/// Appends the bytes of a short text; false when a character was replaced.
bool encodePiece(unsigned page, std::string& bytes, std::u16string_view text) {
    std::array<char, 4096> buffer;
    BOOL replaced = FALSE;
    const int length =
        WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide(text.data()), static_cast<int>(text.size()),
                            buffer.data(), static_cast<int>(buffer.size()), "?", &replaced);
    bytes.append(buffer.data(), static_cast<std::size_t>(length));
    return !replaced;
}

} // namespace

std::optional<CodePage> CodePage::find(unsigned number) {
    static std::mutex guard;
    static std::map<unsigned, Data> known;
    const std::lock_guard lock(guard);
    if (const auto found = known.find(number); found != known.end())
        return CodePage(found->second);
    CPINFOEXW info{};
    if (number < 3 || !GetCPInfoExW(number, 0, &info) || (info.MaxCharSize > 2 && !isUtf8(number)))
        return std::nullopt;
    Data data;
    data.number = number;
    data.isDoubleByte = info.MaxCharSize == 2;
    data.substitute = static_cast<char16_t>(info.UnicodeDefaultChar);
    for (std::size_t i = 0; i + 1 < MAX_LEADBYTES && info.LeadByte[i]; i += 2)
        for (unsigned lead = info.LeadByte[i]; lead <= info.LeadByte[i + 1]; ++lead)
            data.isLead[lead] = true;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char single = static_cast<char>(byte);
        const auto text = isUtf8(number) ? std::u16string(1, static_cast<char16_t>(byte))
                                         : decodeBytes(number, std::string_view(&single, 1));
        data.characters[byte] = text.empty() || data.isLead[byte] ? data.substitute : text[0];
    }
    return CodePage(known.emplace(number, data).first->second);
}

CodePage CodePage::system() {
    const auto page = find(GetACP());
    return page ? *page : *find(1252);
}

unsigned CodePage::number() const noexcept {
    return data_->number;
}

bool CodePage::appendInPage(std::string& bytes, std::u16string_view text) const {
    bool exact = true;
    bytes.reserve(bytes.size() + text.size());
    for (constexpr std::size_t piece = 2048; !text.empty(); text.remove_prefix(std::min(piece, text.size())))
        exact = encodePiece(data_->number, bytes, text.substr(0, piece)) && exact;
    return exact;
}

String CodePage::decodeInPage(std::string_view bytes) const {
    if (data_->isDoubleByte)
        return decodeBytes(data_->number, bytes);
    return String::build(bytes.size(), [&](char16_t* to) {
        for (const char byte : bytes)
            *to++ = data_->characters[static_cast<unsigned char>(byte)];
    });
}

bool CodePage::isTextInPage(std::string_view bytes) const noexcept {
    return !data_->isDoubleByte || bytes.empty() ||
           MultiByteToWideChar(data_->number, MB_ERR_INVALID_CHARS, bytes.data(),
                               static_cast<int>(bytes.size()), nullptr, 0) > 0;
}

bool CodePage::isLeadByte(unsigned char byte) const noexcept {
    return data_->isLead[byte];
}

std::int16_t CodePage::codeOf(char16_t character) const noexcept {
    if (isUtf8(data_->number))
        return static_cast<std::int16_t>(character <= 0xFF ? character : u'?');
    char bytes[2];
    BOOL replaced = FALSE;
    const auto* text = wide(&character);
    const int length =
        WideCharToMultiByte(data_->number, WC_NO_BEST_FIT_CHARS, text, 1, bytes, 2, "?", &replaced);
    const auto byte = [&](int i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
    return static_cast<std::int16_t>(length == 2 ? byte(0) << 8 | byte(1) : length == 1 ? byte(0) : u'?');
}

char16_t CodePage::characterOf(std::int16_t code) const noexcept {
    const auto bits = static_cast<std::uint16_t>(code);
    if (bits <= 0xFF)
        return data_->characters[bits];
    if (!data_->isLead[bits >> 8])
        return data_->substitute;
    const char bytes[2] = {static_cast<char>(bits >> 8), static_cast<char>(bits & 0xFF)};
    wchar_t text[2] = {};
    const int length = MultiByteToWideChar(data_->number, 0, bytes, 2, text, 2);
    return length == 1 ? static_cast<char16_t>(text[0]) : data_->substitute;
}

} // namespace vlgs
