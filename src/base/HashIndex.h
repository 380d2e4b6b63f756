// SPDX-License-Identifier: MIT
// Finds numbered things by a hash of them: open addressing with linear probing, 8 bytes a slot. The things
// themselves, and their comparison, stay with the owner.
//
// Invariant: a slot in use is reached from its home slot without passing a free one, and at most half of the
// slots are in use.
#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace vlgs {

class HashIndex {
  public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    std::uint32_t size() const noexcept { return used_; }
    /// False until room was made for the first time.
    bool exists() const noexcept { return capacity_ > 0; }

    /// The number of the thing with that hash for which `same(number)` holds, or `none`.
    template <class Same>
    std::uint32_t find(std::uint64_t hash, Same&& same) const {
        if (capacity_ == 0)
            return none;
        const auto tag = static_cast<std::uint32_t>(hash);
        for (std::uint32_t at = tag & mask(); slots_[at].number != none; at = (at + 1) & mask())
            if (slots_[at].tag == tag && same(slots_[at].number))
                return slots_[at].number;
        return none;
    }

    /// Begins to fetch what a search for that hash will read.
    void prefetch(std::uint64_t hash) const noexcept {
        if (capacity_ > 0)
            __builtin_prefetch(&slots_[static_cast<std::uint32_t>(hash) & mask()]);
    }

    /// Makes sure that the next `more` insertions need no memory.
    void reserve(std::uint32_t more) {
        const std::uint64_t wanted = std::uint64_t{used_} + more;
        std::uint64_t capacity = capacity_ == 0 ? smallest : capacity_;
        while (wanted * 2 > capacity)
            capacity *= 2;
        if (capacity > largest)
            throw std::bad_alloc();
        if (capacity != capacity_)
            resize(static_cast<std::uint32_t>(capacity));
    }

    /// REQUIRES: reserved room; the number is in the index only once.
    void insert(std::uint64_t hash, std::uint32_t number) noexcept {
        place({static_cast<std::uint32_t>(hash), number});
        ++used_;
    }

    /// Takes out the number that was inserted with that hash. REQUIRES: it is there.
    void erase(std::uint64_t hash, std::uint32_t number) noexcept {
        std::uint32_t gap = static_cast<std::uint32_t>(hash) & mask();
        while (slots_[gap].number != number)
            gap = (gap + 1) & mask();
        // What stands behind the gap moves into it when the gap lies between its home slot and itself.
        for (std::uint32_t at = (gap + 1) & mask(); slots_[at].number != none; at = (at + 1) & mask())
            if (((at - slots_[at].tag) & mask()) >= ((at - gap) & mask())) {
                slots_[gap] = slots_[at];
                gap = at;
            }
        slots_[gap].number = none;
        --used_;
    }

    /// Gives every number n the number `numbers[n]`.
    void renumber(std::span<const std::uint32_t> numbers) noexcept {
        for (std::uint32_t at = 0; at < capacity_; ++at)
            if (slots_[at].number != none)
                slots_[at].number = numbers[slots_[at].number];
    }

    void clear() noexcept {
        slots_.reset();
        capacity_ = used_ = 0;
    }

  private:
    struct Slot {
        std::uint32_t tag = 0; // the low half of the hash; its low bits are the home slot
        std::uint32_t number = none;
    };
    static constexpr std::uint64_t smallest = 16;
    static constexpr std::uint64_t largest = std::uint64_t{1} << 31;

    std::uint32_t mask() const noexcept { return capacity_ - 1; }

    void place(Slot slot) noexcept {
        std::uint32_t at = slot.tag & mask();
        while (slots_[at].number != none)
            at = (at + 1) & mask();
        slots_[at] = slot;
    }

    void resize(std::uint32_t capacity) {
        auto old = std::exchange(slots_, std::make_unique<Slot[]>(capacity));
        const std::uint32_t oldCapacity = std::exchange(capacity_, capacity);
        for (std::uint32_t at = 0; at < oldCapacity; ++at)
            if (old[at].number != none)
                place(old[at]);
    }

    std::unique_ptr<Slot[]> slots_;
    std::uint32_t capacity_ = 0; // 0 or a power of two
    std::uint32_t used_ = 0;
};

} // namespace vlgs
