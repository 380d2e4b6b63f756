// SPDX-License-Identifier: MIT
#include "ini/TextArena.h"

#include "platform/LargePages.h"

#include <algorithm>
#include <limits>
#include <new>

namespace vlgs {

namespace {

constexpr std::size_t firstCapacity = 1024;

template <class Unit>
void write(StoredText text, char* to) {
    text.copyTo(reinterpret_cast<Unit*>(to));
}

} // namespace

// A wide text that could have been narrow is made so.
std::uint32_t TextArena::formOf(StoredText text) {
    constexpr std::size_t longest = std::numeric_limits<std::int32_t>::max() / sizeof(char16_t);
    static_assert(longest <= lengthBits);
    if (text.length() > longest)
        throw std::bad_alloc();
    return static_cast<std::uint32_t>(text.length()) |
           (text.visit([](auto view) { return sizeof view[0] == 1 || isAscii(view); }) ? 0 : wide);
}

TextArena::Place TextArena::add(StoredText name, StoredText value, std::uint32_t hash) {
    const Record record{formOf(name), formOf(value), hash};
    const std::size_t valueAt = valueOffset(record);
    const std::size_t size = (valueAt + bytesOf(record.value) + unit - 1) / unit * unit;
    if (size > capacity_ - used_)
        makeRoom(size);
    char* to = blocks_[last_].start + used_;
    new (to) Record(record);
    record.name& wide ? write<char16_t>(name, to + sizeof record) : write<char>(name, to + sizeof record);
    record.value& wide ? write<char16_t>(value, to + valueAt) : write<char>(value, to + valueAt);
    const std::size_t place = last_ * unitsOfBlock + used_ / unit;
    used_ += size;
    return static_cast<Place>(place);
}

void TextArena::replaceValue(Place place, std::uint32_t number) noexcept {
    record(place).value = replaced | number;
}

void TextArena::fit() noexcept {
    if (used_ == capacity_)
        return;
    try {
        growLast(used_);
    } catch (const std::bad_alloc&) {
        // The block then stays as large as it is.
    }
}

// The last block grows by doubling until it has the size that counts as one block.
void TextArena::makeRoom(std::size_t size) {
    if (!blocks_.empty() && used_ + size <= blockSize)
        return growLast(std::min(blockSize, std::max(used_ + size, capacity_ * 2)));
    addBlock(std::max(blocks_.empty() ? firstCapacity : blockSize, size));
}

void TextArena::growLast(std::size_t capacity) {
    Block& block = blocks_[last_];
    const bool intoLargePages = capacity >= largeBlock && capacity > capacity_;
    char* moved = static_cast<char*>(intoLargePages ? allocateInLargePages(capacity)
                                                    : std::realloc(block.start, capacity));
    if (!moved)
        throw std::bad_alloc();
    if (intoLargePages)
        std::copy_n(block.start, used_, moved);
    else
        static_cast<void>(block.memory.release());
    block.memory.reset(moved);
    block.start = moved;
    capacity_ = capacity;
}

void TextArena::addBlock(std::size_t capacity) {
    const std::size_t first = blocks_.size();
    const std::size_t end = first + (capacity + blockSize - 1) / blockSize;
    if (end * unitsOfBlock > std::numeric_limits<Place>::max())
        throw std::bad_alloc();
    blocks_.reserve(std::max(end, first * 2));
    std::unique_ptr<char, Free> memory(static_cast<char*>(allocateInLargePages(capacity)));
    if (!memory)
        throw std::bad_alloc();
    char* start = memory.get();
    blocks_.push_back({std::move(memory), start});
    for (std::size_t block = first + 1; block < end; ++block)
        blocks_.push_back({nullptr, start + (block - first) * blockSize});
    last_ = first;
    used_ = 0;
    capacity_ = capacity;
}

} // namespace vlgs
