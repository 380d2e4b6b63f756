// SPDX-License-Identifier: MIT
// Code pages from compiled-in tables. The tables run from codes to characters; the way back is laid out when
// a page is first used, and never changes afterwards.
#include "platform/CodePage.h"

#include "platform/Locale.h"
#include "platform/posix/UserEnvironment.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace vlgs {

namespace {

constexpr char16_t noCharacter = 0xFFFD;
constexpr unsigned char firstLead = 0x81;
constexpr unsigned char firstTrail = 0x40;
constexpr unsigned utf8Page = 65001;

/// The code to write for a character that has several.
struct Preference {
    char16_t character;
    std::uint16_t code;
};

struct Source {
    unsigned number;
    char16_t substitute;            // the character that stands for undefined codes
    std::u16string_view upperBytes; // the characters of the bytes from 0x80 on, none for a lead byte
    const std::u16string_view* rows;
    std::span<const Preference> preferences;
};

#include "platform/posix/generated_code_pages.inc"

constexpr Source utf8Source{utf8Page, noCharacter, {}, nullptr, {}};

/// Codes by character: 256 blocks of 256 characters, the blocks without any code shared. 0 is no code.
class CodesByCharacter {
  public:
    CodesByCharacter() : blocks_(1) {}

    std::uint16_t operator[](char16_t character) const noexcept {
        return blocks_[index_[character >> 8]][character & 0xFF];
    }

    void set(char16_t character, std::uint16_t code) {
        auto& block = index_[character >> 8];
        if (block == 0) {
            block = static_cast<std::uint8_t>(blocks_.size());
            blocks_.emplace_back();
        }
        blocks_[block][character & 0xFF] = code;
    }

    void setFirst(char16_t character, std::uint16_t code) {
        if ((*this)[character] == 0)
            set(character, code);
    }

  private:
    std::array<std::uint8_t, 256> index_{};
    std::vector<std::array<std::uint16_t, 256>> blocks_;
};

} // namespace

struct CodePage::Data {
    explicit Data(const Source& page);

    bool isDoubleByte() const noexcept { return source.rows != nullptr; }
    bool isLead(unsigned char byte) const noexcept {
        return isDoubleByte() && byte >= firstLead && characters[byte] == noCharacter;
    }
    char16_t pair(unsigned char lead, unsigned char trail) const noexcept {
        return isMapped(lead, trail) ? source.rows[lead - firstLead][trail - firstTrail] : source.substitute;
    }
    bool isPair(std::string_view bytes, std::size_t at) const noexcept {
        return isLead(static_cast<unsigned char>(bytes[at])) && at + 1 < bytes.size() &&
               static_cast<unsigned char>(bytes[at + 1]) >= firstTrail;
    }
    bool isMapped(unsigned char lead, unsigned char trail) const noexcept {
        const auto row = source.rows[lead - firstLead];
        const auto column = static_cast<std::size_t>(trail - firstTrail);
        return column < row.size() && row[column] != noCharacter;
    }
    std::size_t charactersIn(std::string_view bytes) const noexcept;
    void decodePairs(std::string_view bytes, char16_t* to) const noexcept;
    bool encode(std::u16string_view text, char*& to) const noexcept;

    const Source& source;
    std::array<char16_t, 256> characters{};
    CodesByCharacter codes;
};

CodePage::Data::Data(const Source& page) : source(page) {
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        characters[byte] = static_cast<char16_t>(byte);
        if (byte >= 0x80 && !page.upperBytes.empty())
            characters[byte] = page.upperBytes[byte - 0x80];
        if (!isLead(static_cast<unsigned char>(byte)))
            codes.setFirst(characters[byte], static_cast<std::uint16_t>(byte));
    }
    for (unsigned lead = firstLead; isDoubleByte() && lead < 0xFF; ++lead) {
        const auto row = page.rows[lead - firstLead];
        for (std::size_t column = 0; column < row.size(); ++column)
            if (row[column] != noCharacter)
                codes.setFirst(row[column], static_cast<std::uint16_t>(lead << 8 | (column + firstTrail)));
    }
    for (const auto& [character, code] : page.preferences)
        codes.set(character, code);
}

namespace {

// The loops below run over whole blocks without a branch inside, so that the compiler makes vector code.
constexpr std::size_t blockLength = 32;
constexpr std::size_t shortBlockLength = 8; // for what long blocks leave, and for texts of a few words

template <std::size_t length = blockLength, class Unit>
bool isAsciiBlock(const Unit* block) noexcept {
    unsigned all = 0;
    for (std::size_t i = 0; i < length; ++i)
        all |= static_cast<std::make_unsigned_t<Unit>>(block[i]);
    return all < 0x80;
}

/// The length of the ASCII text that a text begins with, whole blocks only.
template <class Unit>
std::size_t asciiBlocks(const Unit* from, std::size_t length) noexcept {
    std::size_t at = 0;
    while (at + blockLength <= length && isAsciiBlock(from + at))
        at += blockLength;
    return at;
}

/// Copies the ASCII text that a text begins with, whole blocks only, and gives its length.
template <class From, class To>
std::size_t copyAsciiBlocks(const From* from, std::size_t length, To* to) noexcept {
    std::size_t at = 0;
    for (; at + blockLength <= length && isAsciiBlock(from + at); at += blockLength)
        for (std::size_t i = 0; i < blockLength; ++i)
            to[at + i] = static_cast<To>(from[at + i]);
    for (; at + shortBlockLength <= length && isAsciiBlock<shortBlockLength>(from + at);
         at += shortBlockLength)
        for (std::size_t i = 0; i < shortBlockLength; ++i)
            to[at + i] = static_cast<To>(from[at + i]);
    return at;
}

} // namespace

std::size_t CodePage::Data::charactersIn(std::string_view bytes) const noexcept {
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto ascii = asciiBlocks(bytes.data() + at, bytes.size() - at);
        at += ascii;
        count += ascii;
        for (const auto end = std::min(bytes.size(), at + blockLength); at < end; ++count)
            at += isPair(bytes, at) ? 2 : 1;
    }
    return count;
}

void CodePage::Data::decodePairs(std::string_view bytes, char16_t* to) const noexcept {
    for (std::size_t at = 0; at < bytes.size();) {
        const auto copied = copyAsciiBlocks(bytes.data() + at, bytes.size() - at, to);
        at += copied;
        to += copied;
        for (const auto end = std::min(bytes.size(), at + blockLength); at < end;) {
            const auto byte = static_cast<unsigned char>(bytes[at]);
            if (isPair(bytes, at)) {
                *to++ = pair(byte, static_cast<unsigned char>(bytes[at + 1]));
                at += 2;
            } else {
                // A lead byte alone leaves what follows a character of its own: it may end the line.
                *to++ = isLead(byte) ? source.substitute : characters[byte];
                ++at;
            }
        }
    }
}

// Writes at most two bytes for each character; false when one was replaced.
bool CodePage::Data::encode(std::u16string_view text, char*& to) const noexcept {
    bool exact = true;
    for (std::size_t at = 0; at < text.size();) {
        const auto copied = copyAsciiBlocks(text.data() + at, text.size() - at, to);
        at += copied;
        to += copied;
        for (const auto end = std::min(text.size(), at + blockLength); at < end; ++at) {
            const char16_t character = text[at];
            const std::uint16_t code = codes[character];
            if (code == 0 && character != 0) {
                exact = false;
                *to++ = '?';
                continue;
            }
            if (code > 0xFF)
                *to++ = static_cast<char>(code >> 8);
            *to++ = static_cast<char>(code & 0xFF);
        }
    }
    return exact;
}

std::optional<CodePage> CodePage::find(unsigned number) {
    static constexpr auto lookUp = []<std::size_t... i>(unsigned wanted, std::index_sequence<i...>) {
        const Data* found = nullptr;
        const auto offer = [&]<std::size_t index>(std::integral_constant<std::size_t, index>) {
            if (sources[index].number != wanted)
                return;
            static const Data data(sources[index]);
            found = &data;
        };
        (offer(std::integral_constant<std::size_t, i>()), ...);
        return found;
    };
    if (number == utf8Page) {
        static const Data data(utf8Source);
        return CodePage(data);
    }
    const Data* data = lookUp(number, std::make_index_sequence<std::size(sources)>());
    return data ? std::optional(CodePage(*data)) : std::nullopt;
}

CodePage CodePage::system() {
    thread_local std::uint32_t generation = 0;
    thread_local std::optional<CodePage> page;
    const auto& environment = userEnvironment();
    if (generation != environment.generation) {
        page = named(environment.codePage);
        if (!page)
            page = find(Locale::system().codePage());
        generation = environment.generation;
    }
    return page.value();
}

unsigned CodePage::number() const noexcept {
    return data_->source.number;
}

bool CodePage::appendInPage(std::string& bytes, std::u16string_view text) const {
    bool exact = true;
    std::array<char, 8192> buffer;
    bytes.reserve(bytes.size() + text.size());
    while (!text.empty()) {
        const auto piece = text.substr(0, buffer.size() / 2);
        char* end = buffer.data();
        exact = data_->encode(piece, end) && exact;
        bytes.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
        text.remove_prefix(piece.size());
    }
    return exact;
}

String CodePage::decodeInPage(std::string_view bytes) const {
    if (data_->isDoubleByte())
        return String::build(data_->charactersIn(bytes),
                             [&](char16_t* to) { data_->decodePairs(bytes, to); });
    return String::build(bytes.size(), [&](char16_t* to) {
        for (std::size_t at = 0; at < bytes.size();) {
            at += copyAsciiBlocks(bytes.data() + at, bytes.size() - at, to + at);
            for (const auto end = std::min(bytes.size(), at + blockLength); at < end; ++at)
                to[at] = data_->characters[static_cast<unsigned char>(bytes[at])];
        }
    });
}

bool CodePage::isTextInPage(std::string_view bytes) const noexcept {
    for (std::size_t at = 0; data_->isDoubleByte() && at < bytes.size(); ++at) {
        if (!data_->isLead(static_cast<unsigned char>(bytes[at])))
            continue;
        if (!data_->isPair(bytes, at) || !data_->isMapped(static_cast<unsigned char>(bytes[at]),
                                                          static_cast<unsigned char>(bytes[at + 1])))
            return false;
        ++at;
    }
    return true;
}

bool CodePage::isLeadByte(unsigned char byte) const noexcept {
    return data_->isLead(byte);
}

std::int16_t CodePage::codeOf(char16_t character) const noexcept {
    const std::uint16_t code = data_->codes[character];
    return code == 0 && character != 0 ? std::int16_t{u'?'} : static_cast<std::int16_t>(code);
}

char16_t CodePage::characterOf(std::int16_t code) const noexcept {
    const auto bits = static_cast<std::uint16_t>(code);
    const auto lead = static_cast<unsigned char>(bits >> 8);
    const auto low = static_cast<unsigned char>(bits & 0xFF);
    if (lead == 0)
        return data_->isLead(low) ? data_->source.substitute : data_->characters[low];
    return data_->isLead(lead) && low >= firstTrail ? data_->pair(lead, low) : data_->source.substitute;
}

} // namespace vlgs
