#include "ini/Buffer.h"

#include "automation/CaseFold.h"
#include "automation/Text.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace vlgs {

static_assert(std::endian::native == std::endian::little, "16-bit text is stored as it lies in memory");

namespace {

constexpr std::size_t largestSize = std::numeric_limits<std::int32_t>::max();

// The type codes with a bit in common with that of bytes stand for elements that are stored as they are.
constexpr bool isStoredRaw(VarType element) {
    return (code(element) & code(VarType::Byte)) != 0;
}

} // namespace

const ClassInfo& Buffer::description() {
    return classInfoOf<Buffer>();
}

void Buffer::SetChunkSize(std::int32_t lChunkSize) {
    chunkSize_ = lChunkSize < 1 ? standardChunkSize : lChunkSize;
}

void Buffer::SetCompact(bool bCompact) {
    compact_ = bCompact;
}

void Buffer::Clear() {
    delimiter_ = String();
    chunkSize_ = standardChunkSize;
    compact_ = false;
    std::string().swap(bytes_);
}

void Buffer::SetDelimiter(const String& sDelimiter) {
    delimiter_ = sDelimiter;
}

void Buffer::PutData(const Variant& vData, const String& sDelimiter) {
    const String delimiter = inForce(sDelimiter);
    if (vData.isArray())
        putElements(vData.array(), delimiter);
    else
        putText(vData.isMissing() ? String() : toText(vData), delimiter);
}

void Buffer::putElements(const Array& array, const String& delimiter) {
    if (array.rank() != 1)
        raise(RunTimeError::SubscriptOutOfRange);
    if (!isStoredRaw(array.element())) {
        for (std::size_t i = 0; i < array.size(); ++i)
            putText(toText(array.at(i)), delimiter);
        return;
    }
    switch (array.element()) {
    case VarType::Byte:
        return appendBytes(array.as<std::uint8_t>().data(), array.size());
    case VarType::Boolean:
        return appendBytes(array.as<std::int16_t>().data(), array.size() * sizeof(std::int16_t));
    case VarType::Long:
        return appendBytes(array.as<std::int32_t>().data(), array.size() * sizeof(std::int32_t));
    case VarType::Double:
        return appendBytes(array.as<double>().data(), array.size() * sizeof(double));
    case VarType::Date:
        return appendBytes(array.as<Date>().data(), array.size() * sizeof(Date));
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

void Buffer::append(std::u16string_view text) {
    if (!compact_)
        return appendBytes(text.data(), text.size() * sizeof(char16_t));
    const std::string bytes = CodePage::system().encode(text);
    appendBytes(bytes.data(), bytes.size());
}

void Buffer::appendBytes(const void* from, std::size_t count) {
    makeRoomFor(count);
    bytes_.append(static_cast<const char*>(from), count);
}

// Doubles where chunks alone would copy the store again and again.
void Buffer::makeRoomFor(std::size_t count) {
    if (count > largestSize - bytes_.size())
        raise(RunTimeError::Overflow);
    const std::size_t wanted = bytes_.size() + count;
    if (wanted <= bytes_.capacity())
        return;
    const auto step = std::max(static_cast<std::size_t>(chunkSize_), bytes_.capacity());
    bytes_.reserve(std::max(wanted, std::min(bytes_.capacity() + step, largestSize)));
}

Variant Buffer::GetData(enumStreamTypes eStreamType, const String& sDelimiter) const {
    switch (eStreamType) {
    case _eStream_ByteArray: {
        if (bytes_.empty())
            return Array::ofBytes({0});
        return Array::ofBytes({bytes_.begin(), bytes_.end()});
    }
    case eStream_StringArray: {
        const String whole = text();
        const auto pieces = splitIgnoringCase(whole, inForce(sDelimiter));
        return Array::ofStrings({pieces.begin(), pieces.end()});
    }
    case eStream_String:
        return text();
    }
    return {};
}

// An empty store counts as a single 0 byte, which is a character in the compact form and none in the other.
String Buffer::text() const {
    if (compact_)
        return CodePage::system().decode(bytes_.empty() ? std::string_view("\0", 1) : bytes_);
    return String::build(bytes_.size() / sizeof(char16_t), [&](char16_t* to) {
        bytes_.copy(reinterpret_cast<char*>(to), bytes_.size() / sizeof(char16_t) * sizeof(char16_t));
    });
}

std::vector<std::u16string_view> splitIgnoringCase(std::u16string_view text, std::u16string_view delimiter) {
    // Below 128 nothing but a letter equals another character.
    const bool isCaseless = std::ranges::all_of(delimiter, [](char16_t c) {
        return c < 0x80 && !(c >= u'A' && c <= u'Z') && !(c >= u'a' && c <= u'z');
    });
    if (isCaseless)
        return split(text, delimiter);
    std::vector<std::u16string_view> pieces;
    std::size_t from = 0;
    for (auto at = findIgnoringCase(text, delimiter); at != text.npos;
         at = findIgnoringCase(text, delimiter, from)) {
        pieces.push_back(text.substr(from, at - from));
        from = at + delimiter.size();
    }
    pieces.push_back(text.substr(from));
    return pieces;
}

} // namespace vlgs
