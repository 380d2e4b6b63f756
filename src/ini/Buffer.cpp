// SPDX-License-Identifier: MIT
#include "ini/Buffer.h"

#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string>

namespace vlgs {

static_assert(std::endian::native == std::endian::little, "16-bit text is stored as it lies in memory");

namespace {

constexpr std::size_t largestSize = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t largestStep = 65536;

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
    chunks_.clear();
    size_ = room_ = 0;
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
    if (count > largestSize - size_)
        raise(RunTimeError::Overflow);
    const char* bytes = static_cast<const char*>(from);
    while (count > 0) {
        if (room_ == 0)
            addChunk();
        const std::size_t part = std::min(count, room_);
        std::memcpy(chunks_.back().bytes.get() + chunks_.back().capacity - room_, bytes, part);
        bytes += part;
        count -= part;
        size_ += part;
        room_ -= part;
    }
}

// Grows with what is there, up to a limit, so that a large store is not made of many small chunks.
void Buffer::addChunk() {
    const std::size_t capacity = std::max(static_cast<std::size_t>(chunkSize_), std::min(size_, largestStep));
    chunks_.push_back({std::make_unique_for_overwrite<char[]>(capacity), capacity});
    room_ = capacity;
}

void Buffer::copyBytes(void* to) const {
    char* end = static_cast<char*>(to);
    for (const auto& [bytes, capacity] : chunks_) {
        const std::size_t used = &bytes == &chunks_.back().bytes ? capacity - room_ : capacity;
        std::memcpy(end, bytes.get(), used);
        end += used;
    }
}

Variant Buffer::GetData(enumStreamTypes eStreamType, const String& sDelimiter) const {
    switch (eStreamType) {
    case _eStream_ByteArray: {
        std::vector<std::uint8_t> bytes(std::max<std::size_t>(size_, 1));
        copyBytes(bytes.data());
        return Array::ofBytes(std::move(bytes));
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
    if (!compact_ && size_ % sizeof(char16_t) == 0)
        return String::build(size_ / sizeof(char16_t), [&](char16_t* to) { copyBytes(to); });
    std::string bytes(std::max<std::size_t>(size_, 1), '\0');
    copyBytes(bytes.data());
    if (compact_)
        return CodePage::system().decode(bytes);
    return String::build(size_ / sizeof(char16_t), [&](char16_t* to) {
        bytes.copy(reinterpret_cast<char*>(to), size_ / sizeof(char16_t) * sizeof(char16_t));
    });
}

} // namespace vlgs
