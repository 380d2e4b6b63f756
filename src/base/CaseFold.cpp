// SPDX-License-Identifier: MIT
#include "base/CaseFold.h"

#include "base/KeyedHash.h"
#include "base/LinearSearch.h"

#include <algorithm>
#include <cstring>

namespace vlgs {

namespace {

#include "base/case_fold_data.inc"

constexpr bool isHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// One of the three maps, for a unit and the unit before it.
class UnitMap {
  public:
    explicit constexpr UnitMap(const std::uint8_t* blockNumbers) : blockNumbers_(blockNumbers) {}

    char16_t operator()(char16_t unit) const noexcept { return add(unit, unit); }

    // The second unit of a surrogate pair changes, the first one never does.
    char16_t operator()(char16_t unit, char16_t before) const noexcept {
        if (isLowSurrogate(unit) && isHighSurrogate(before))
            return add(unit, 0x10000 + ((before - 0xD800u) << 10) + (unit - 0xDC00u));
        return add(unit, unit);
    }

    String operator()(std::u16string_view text) const {
        return String::build(text.size(), [&](char16_t* to) {
            char16_t before = 0;
            for (const char16_t unit : text) {
                *to++ = (*this)(unit, before);
                before = unit;
            }
        });
    }

  private:
    char16_t add(char16_t unit, char32_t point) const noexcept {
        if (point >= mappedLimit)
            return unit;
        const auto& block = blocks[blockNumbers_[point >> blockBits]];
        return static_cast<char16_t>(unit + block[point & ((1u << blockBits) - 1)]);
    }

    const std::uint8_t* blockNumbers_;
};

constexpr UnitMap folding(foldingBlocks);
constexpr UnitMap upper(upperBlocks);
constexpr UnitMap lower(lowerBlocks);

char16_t foldAt(std::u16string_view text, std::size_t at) noexcept {
    const char16_t unit = text[at];
    if (unit < 0x80)
        return static_cast<unsigned>(unit - u'A') < 26 ? static_cast<char16_t>(unit + 32) : unit;
    return folding(unit, at > 0 ? text[at - 1] : u'\0');
}

// Four units at once, which is what comparison and hash work on. A text of ASCII bytes is widened on the way.
constexpr std::uint64_t everyUnit = 0x0001'0001'0001'0001;
constexpr std::size_t unitsPerWord = 4;

std::uint64_t loadWord(std::u16string_view text, std::size_t at) noexcept {
    std::uint64_t word;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
}
std::uint64_t loadWord(std::string_view ascii, std::size_t at) noexcept {
    std::uint32_t bytes;
    std::memcpy(&bytes, ascii.data() + at, sizeof bytes);
    std::uint64_t word = bytes;
    word = (word | word << 16) & 0x0000'FFFF'0000'FFFF;
    return (word | word << 8) & everyUnit * 0xFF;
}

std::uint64_t foldOtherWord(std::u16string_view text, std::size_t at) noexcept {
    char16_t units[unitsPerWord];
    for (std::size_t i = 0; i < unitsPerWord; ++i)
        units[i] = foldAt(text, at + i);
    return loadWord({units, unitsPerWord}, 0);
}

std::uint64_t foldAsciiWord(std::uint64_t word) noexcept {
    const std::uint64_t fromA = word + everyUnit * (0x80 - u'A');
    const std::uint64_t behindZ = word + everyUnit * (0x80 - u'Z' - 1);
    return word | (fromA & ~behindZ & everyUnit * 0x80) >> 2;
}

inline std::uint64_t foldWord(std::u16string_view text, std::size_t at) noexcept {
    const std::uint64_t word = loadWord(text, at);
    if ((word & everyUnit * 0xFF80) != 0) [[unlikely]]
        return foldOtherWord(text, at);
    return foldAsciiWord(word);
}
inline std::uint64_t foldWord(std::string_view ascii, std::size_t at) noexcept {
    return foldAsciiWord(loadWord(ascii, at));
}

char16_t foldUnit(std::u16string_view text, std::size_t at) noexcept {
    return foldAt(text, at);
}
char16_t foldUnit(std::string_view ascii, std::size_t at) noexcept {
    const char unit = ascii[at];
    return static_cast<char16_t>(unit >= 'A' && unit <= 'Z' ? unit + 32 : unit);
}

// Not inlined, so that longer texts need no registers for it.
template <class View>
[[gnu::noinline]] std::uint64_t foldShort(View text) noexcept {
    std::uint64_t word = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        word |= static_cast<std::uint64_t>(foldUnit(text, at)) << 16 * at;
    return word;
}

// The units from `at` on, fewer than a word, in the low bits of one. REQUIRES: words stand before `at`.
template <class View>
std::uint64_t foldTail(View text, std::size_t at) noexcept {
    if (text.size() < unitsPerWord)
        return foldShort(text);
    return foldWord(text, text.size() - unitsPerWord) >> 16 * (unitsPerWord - (text.size() - at));
}

template <class ViewA, class ViewB>
bool equalFolded(ViewA a, ViewB b) noexcept {
    if (a.size() != b.size())
        return false;
    // Units that are the same fold to the same, since what stands before them does.
    const auto differ = [&](std::size_t at) {
        return loadWord(a, at) != loadWord(b, at) && foldWord(a, at) != foldWord(b, at);
    };
    std::size_t at = 0;
    for (; at + unitsPerWord <= a.size(); at += unitsPerWord)
        if (differ(at))
            return false;
    if (a.size() >= unitsPerWord)
        return !differ(a.size() - unitsPerWord);
    return foldTail(a, 0) == foldTail(b, 0);
}

template <class View>
std::uint64_t hashFolded(View text) noexcept {
    KeyedHash hash;
    std::size_t at = 0;
    for (; at + unitsPerWord <= text.size(); at += unitsPerWord)
        hash.add(foldWord(text, at));
    // The last word holds the up to three units left and the length, so that no two texts give the same
    // words.
    std::uint64_t last = static_cast<std::uint64_t>(text.size()) << 48;
    if (at < text.size())
        last |= foldTail(text, at);
    hash.add(last);
    return hash.finish();
}

using FoldedSearch = LinearSearch<String, foldAt>;

} // namespace

char16_t foldCase(char16_t character) noexcept {
    return folding(character);
}

String foldCase(std::u16string_view text) {
    return folding(text);
}

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept {
    return equalFolded(a, b);
}

bool equalIgnoringCase(std::string_view ascii, std::u16string_view text) noexcept {
    return equalFolded(ascii, text);
}

bool equalIgnoringCase(std::string_view ascii, std::string_view other) noexcept {
    return equalFolded(ascii, other);
}

int compareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept {
    const std::size_t common = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at + unitsPerWord <= common && foldWord(a, at) == foldWord(b, at))
        at += unitsPerWord;
    for (; at < common; ++at)
        if (const int difference = foldAt(a, at) - foldAt(b, at))
            return difference;
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::uint64_t hashIgnoringCase(std::u16string_view text) noexcept {
    return hashFolded(text);
}

std::uint64_t hashIgnoringCase(std::string_view ascii) noexcept {
    return hashFolded(ascii);
}

std::size_t findIgnoringCase(std::u16string_view text, std::u16string_view find, std::size_t from) {
    if (from > text.size() || find.size() > text.size() - from)
        return text.npos;
    return find.empty() ? from : FoldedSearch(foldCase(find)).in(text, from);
}

String replaceAllIgnoringCase(std::u16string_view text, std::u16string_view find,
                              std::u16string_view replacement) {
    if (find.empty() || find.size() > text.size())
        return text;
    const FoldedSearch search(foldCase(find));
    std::u16string out;
    std::size_t from = 0;
    for (auto at = search.in(text, 0); at != text.npos; at = search.in(text, from)) {
        out.append(text, from, at - from).append(replacement);
        from = at + find.size();
    }
    return from == 0 ? String(text) : String(out.append(text, from));
}

String toLower(std::u16string_view text) {
    return lower(text);
}

String toUpper(std::u16string_view text) {
    return upper(text);
}

} // namespace vlgs
