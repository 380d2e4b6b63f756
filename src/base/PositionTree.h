// SPDX-License-Identifier: MIT
// A sequence of numbers in which every place can be found, filled and emptied in logarithmic time: a B+-tree
// whose inner nodes count what hangs below each child.
//
// Invariants: the leaves, left to right, hold the sequence; every number stands in it at most once, and
// `leafOf_` tells in which leaf. Only a leaf that is the root may be empty. An inner node has at least two
// children if it is the root, else one; two neighbours that fit well into one node are joined when one of
// them gets small.
#pragma once

#include <cstdint>
#include <vector>

namespace vlgs {

class PositionTree {
  public:
    /// Valid until the next change.
    struct Place {
        std::uint32_t leaf;
        std::uint32_t offset;
    };

    /// The sequence 0, 1, … count - 1.
    explicit PositionTree(std::uint32_t count);

    std::uint32_t size() const noexcept { return size_; }

    /// REQUIRES: position <= size(); the last one is the place behind the end.
    Place placeAt(std::uint32_t position) const noexcept;
    /// REQUIRES: the number is in the sequence.
    Place placeOf(std::uint32_t number) const noexcept;
    /// Begins to fetch what `placeOf` will read.
    void prefetch(std::uint32_t number) const noexcept {
        const Leaf& leaf = leaves_[leafOf_[number]];
        constexpr std::uint32_t numbersInCacheLine = 16;
        for (std::uint32_t i = 0; i < leafCapacity; i += numbersInCacheLine)
            __builtin_prefetch(&leaf.numbers[i]);
    }
    /// REQUIRES: the place is not behind the end.
    std::uint32_t numberAt(Place place) const noexcept { return leaves_[place.leaf].numbers[place.offset]; }

    /// Puts `number`, which is not in the sequence, at the place and moves what stood there behind it.
    void insert(Place place, std::uint32_t number);
    void erase(Place place) noexcept;

  private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t leafCapacity = 126;
    static constexpr std::uint32_t innerCapacity = 62;

    struct Leaf {
        std::uint32_t parent = none; // in a leaf not in use: the next one not in use
        std::uint32_t size = 0;
        std::uint32_t numbers[leafCapacity];
    };
    struct Inner {
        std::uint32_t parent = none; // as in Leaf
        std::uint32_t size = 0;
        std::uint32_t children[innerCapacity];
        std::uint32_t totals[innerCapacity]; // how many numbers hang below each child
    };
    // A node on a level; leaves are on level 0, their parents on level 1.
    struct Node {
        std::uint32_t level;
        std::uint32_t index;
    };

    Node parentOf(Node node) const noexcept;
    void setParent(Node node, std::uint32_t parent) noexcept;
    std::uint32_t sizeOf(Node node) const noexcept;
    std::uint32_t slotIn(const Inner& parent, std::uint32_t child) const noexcept;
    void addToTotals(std::uint32_t leaf, std::uint32_t difference) noexcept;

    void reserveForSplits();
    std::uint32_t takeLeaf() noexcept;
    std::uint32_t takeInner() noexcept;
    Place splitLeaf(Place place) noexcept;
    void splitInner(Node node) noexcept;
    void insertBehind(Node left, std::uint32_t right, std::uint32_t rightTotal) noexcept;
    std::uint32_t moveTail(Node from, std::uint32_t to, std::uint32_t keep) noexcept;

    void removeNode(Node node) noexcept;
    void lowerRoot() noexcept;
    void joinWithNeighbour(Node node) noexcept;
    void release(Node node) noexcept;

    std::vector<Leaf> leaves_;
    std::vector<Inner> inners_;
    std::vector<std::uint32_t> leafOf_;
    Node root_{0, 0};
    std::uint32_t freeLeaf_ = none;
    std::uint32_t freeInner_ = none;
    std::uint32_t size_ = 0;
    // The leaf found last, so that reading in order does not walk down from the root each time.
    mutable std::uint32_t recentLeaf_ = none;
    mutable std::uint32_t recentFirst_ = 0;
};

} // namespace vlgs
