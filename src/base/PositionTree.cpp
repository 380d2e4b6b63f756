// SPDX-License-Identifier: MIT
#include "base/PositionTree.h"

#include <algorithm>

namespace vlgs {

namespace {

// Room for `more` elements without giving up the doubling of the capacity.
template <class T>
void reserveMore(std::vector<T>& vector, std::size_t more) {
    if (vector.capacity() - vector.size() < more)
        vector.reserve(std::max(vector.size() + more, vector.capacity() * 2));
}

template <class T>
void openGap(T* items, std::uint32_t size, std::uint32_t at) {
    std::copy_backward(items + at, items + size, items + size + 1);
}

template <class T>
void closeGap(T* items, std::uint32_t size, std::uint32_t at) {
    std::copy(items + at + 1, items + size, items + at);
}

} // namespace

PositionTree::PositionTree(std::uint32_t count) : leafOf_(count), size_(count) {
    // Nodes are filled to three quarters: the first changes come to places all over the sequence.
    constexpr std::uint32_t leafFill = leafCapacity / 4 * 3;
    constexpr std::uint32_t innerFill = innerCapacity / 4 * 3;
    std::vector<std::uint32_t> totals;
    leaves_.reserve(count / leafFill + 1);
    for (std::uint32_t first = 0; first < count || leaves_.empty(); first += leafFill) {
        Leaf& leaf = leaves_.emplace_back();
        leaf.size = std::min(leafFill, count - first);
        for (std::uint32_t i = 0; i < leaf.size; ++i) {
            leaf.numbers[i] = first + i;
            leafOf_[first + i] = static_cast<std::uint32_t>(leaves_.size() - 1);
        }
        totals.push_back(leaf.size);
    }
    std::uint32_t firstOfLevel = 0;
    while (totals.size() > 1) {
        std::vector<std::uint32_t> above;
        const auto firstAbove = static_cast<std::uint32_t>(inners_.size());
        for (std::size_t i = 0; i < totals.size(); ++i) {
            if (i % innerFill == 0) {
                inners_.emplace_back();
                above.push_back(0);
            }
            Inner& inner = inners_.back();
            const auto child = firstOfLevel + static_cast<std::uint32_t>(i);
            inner.children[inner.size] = child;
            inner.totals[inner.size++] = totals[i];
            setParent({root_.level, child}, static_cast<std::uint32_t>(inners_.size() - 1));
            above.back() += totals[i];
        }
        root_ = {root_.level + 1, firstAbove};
        firstOfLevel = firstAbove;
        totals = std::move(above);
    }
}

PositionTree::Place PositionTree::placeAt(std::uint32_t position) const noexcept {
    if (recentLeaf_ != none && position - recentFirst_ < leaves_[recentLeaf_].size)
        return {recentLeaf_, position - recentFirst_};
    std::uint32_t node = root_.index;
    std::uint32_t offset = position;
    for (std::uint32_t level = root_.level; level > 0; --level) {
        const Inner& inner = inners_[node];
        std::uint32_t slot = 0;
        while (slot + 1 < inner.size && offset >= inner.totals[slot])
            offset -= inner.totals[slot++];
        node = inner.children[slot];
    }
    recentLeaf_ = node;
    recentFirst_ = position - offset;
    return {node, offset};
}

PositionTree::Place PositionTree::placeOf(std::uint32_t number) const noexcept {
    const std::uint32_t leaf = leafOf_[number];
    const auto* numbers = leaves_[leaf].numbers;
    return {leaf,
            static_cast<std::uint32_t>(std::find(numbers, numbers + leaves_[leaf].size, number) - numbers)};
}

void PositionTree::insert(Place place, std::uint32_t number) {
    reserveForSplits();
    if (number >= leafOf_.size())
        leafOf_.resize(number + 1);
    recentLeaf_ = none;
    if (leaves_[place.leaf].size == leafCapacity)
        place = splitLeaf(place);
    Leaf& leaf = leaves_[place.leaf];
    openGap(leaf.numbers, leaf.size, place.offset);
    leaf.numbers[place.offset] = number;
    ++leaf.size;
    leafOf_[number] = place.leaf;
    addToTotals(place.leaf, 1);
    ++size_;
}

void PositionTree::erase(Place place) noexcept {
    recentLeaf_ = none;
    Leaf& leaf = leaves_[place.leaf];
    closeGap(leaf.numbers, leaf.size, place.offset);
    --leaf.size;
    addToTotals(place.leaf, std::uint32_t{0} - 1);
    --size_;
    if (leaf.size == 0)
        removeNode({0, place.leaf});
    else if (leaf.size < leafCapacity / 4)
        joinWithNeighbour({0, place.leaf});
}

PositionTree::Node PositionTree::parentOf(Node node) const noexcept {
    return {node.level + 1, node.level == 0 ? leaves_[node.index].parent : inners_[node.index].parent};
}

void PositionTree::setParent(Node node, std::uint32_t parent) noexcept {
    (node.level == 0 ? leaves_[node.index].parent : inners_[node.index].parent) = parent;
}

std::uint32_t PositionTree::sizeOf(Node node) const noexcept {
    return node.level == 0 ? leaves_[node.index].size : inners_[node.index].size;
}

std::uint32_t PositionTree::slotIn(const Inner& parent, std::uint32_t child) const noexcept {
    return static_cast<std::uint32_t>(std::find(parent.children, parent.children + parent.size, child) -
                                      parent.children);
}

void PositionTree::addToTotals(std::uint32_t leaf, std::uint32_t difference) noexcept {
    std::uint32_t child = leaf;
    for (std::uint32_t at = leaves_[leaf].parent; at != none; at = inners_[at].parent) {
        inners_[at].totals[slotIn(inners_[at], child)] += difference;
        child = at;
    }
}

// One split on each level and a new root, so that nothing can fail in the middle of an insertion.
void PositionTree::reserveForSplits() {
    reserveMore(leaves_, 1);
    reserveMore(inners_, root_.level + 1);
}

std::uint32_t PositionTree::takeLeaf() noexcept {
    if (freeLeaf_ == none) {
        leaves_.emplace_back();
        return static_cast<std::uint32_t>(leaves_.size() - 1);
    }
    const std::uint32_t leaf = freeLeaf_;
    freeLeaf_ = leaves_[leaf].parent;
    leaves_[leaf].parent = none;
    leaves_[leaf].size = 0;
    return leaf;
}

std::uint32_t PositionTree::takeInner() noexcept {
    if (freeInner_ == none) {
        inners_.emplace_back();
        return static_cast<std::uint32_t>(inners_.size() - 1);
    }
    const std::uint32_t inner = freeInner_;
    freeInner_ = inners_[inner].parent;
    inners_[inner].parent = none;
    inners_[inner].size = 0;
    return inner;
}

// The place in the two halves that stands for a place in a full leaf.
PositionTree::Place PositionTree::splitLeaf(Place place) noexcept {
    // Behind the very end a fresh leaf is begun: members that are only appended fill their leaves.
    const bool atEnd = place.offset == leafCapacity && placeAt(size_).leaf == place.leaf;
    const std::uint32_t keep = atEnd ? leafCapacity : leafCapacity / 2;
    const std::uint32_t right = takeLeaf();
    const std::uint32_t moved = moveTail({0, place.leaf}, right, keep);
    insertBehind({0, place.leaf}, right, moved);
    recentLeaf_ = none;
    if (place.offset < keep || (place.offset == keep && !atEnd))
        return place;
    return {right, place.offset - keep};
}

void PositionTree::splitInner(Node node) noexcept {
    const std::uint32_t right = takeInner();
    const std::uint32_t moved = moveTail(node, right, innerCapacity / 2);
    insertBehind(node, right, moved);
}

// Hangs `right`, which took the tail of `left`, into the tree behind it.
void PositionTree::insertBehind(Node left, std::uint32_t right, std::uint32_t rightTotal) noexcept {
    Node parent = parentOf(left);
    if (parent.index == none) {
        parent.index = takeInner();
        Inner& root = inners_[parent.index];
        root.size = 1;
        root.children[0] = left.index;
        root.totals[0] = size_;
        setParent(left, parent.index);
        root_ = parent;
    } else if (inners_[parent.index].size == innerCapacity) {
        splitInner(parent);
        parent = parentOf(left);
    }
    Inner& inner = inners_[parent.index];
    const std::uint32_t slot = slotIn(inner, left.index);
    openGap(inner.children, inner.size, slot + 1);
    openGap(inner.totals, inner.size, slot + 1);
    ++inner.size;
    inner.children[slot + 1] = right;
    inner.totals[slot] -= rightTotal;
    inner.totals[slot + 1] = rightTotal;
    setParent({left.level, right}, parent.index);
}

// Moves all but the first `keep` entries of a node to the end of node `to` of the same level; gives how many
// numbers of the sequence moved.
std::uint32_t PositionTree::moveTail(Node from, std::uint32_t to, std::uint32_t keep) noexcept {
    if (from.level == 0) {
        Leaf& source = leaves_[from.index];
        Leaf& target = leaves_[to];
        const std::uint32_t moved = source.size - keep;
        for (std::uint32_t i = keep; i < source.size; ++i) {
            leafOf_[source.numbers[i]] = to;
            target.numbers[target.size++] = source.numbers[i];
        }
        source.size = keep;
        return moved;
    }
    Inner& source = inners_[from.index];
    Inner& target = inners_[to];
    std::uint32_t moved = 0;
    for (std::uint32_t i = keep; i < source.size; ++i) {
        setParent({from.level - 1, source.children[i]}, to);
        target.children[target.size] = source.children[i];
        target.totals[target.size++] = source.totals[i];
        moved += source.totals[i];
    }
    source.size = keep;
    return moved;
}

// Takes an empty node out of the tree, and what becomes empty or needless above it.
void PositionTree::removeNode(Node node) noexcept {
    const Node parent = parentOf(node);
    if (parent.index == none)
        return;
    Inner& inner = inners_[parent.index];
    const std::uint32_t slot = slotIn(inner, node.index);
    closeGap(inner.children, inner.size, slot);
    closeGap(inner.totals, inner.size, slot);
    --inner.size;
    release(node);
    if (parent.index == root_.index) {
        lowerRoot();
    } else if (inner.size == 0) {
        removeNode(parent);
    } else if (inner.size < innerCapacity / 4) {
        joinWithNeighbour(parent);
    }
}

// A root with a single child gives its place to the child.
void PositionTree::lowerRoot() noexcept {
    while (root_.level > 0 && inners_[root_.index].size == 1) {
        const Node old = root_;
        root_ = {old.level - 1, inners_[old.index].children[0]};
        setParent(root_, none);
        release(old);
    }
}

void PositionTree::joinWithNeighbour(Node node) noexcept {
    const Node parent = parentOf(node);
    if (parent.index == none)
        return;
    Inner& inner = inners_[parent.index];
    const std::uint32_t limit = (node.level == 0 ? leafCapacity : innerCapacity) / 4 * 3;
    const std::uint32_t slot = slotIn(inner, node.index);
    for (const std::uint32_t left : {slot - 1, slot}) {
        if (left >= inner.size || left + 1 >= inner.size)
            continue;
        const Node first{node.level, inner.children[left]};
        const Node second{node.level, inner.children[left + 1]};
        if (sizeOf(first) + sizeOf(second) > limit)
            continue;
        inner.totals[left] += moveTail(second, first.index, 0);
        removeNode(second);
        return;
    }
}

void PositionTree::release(Node node) noexcept {
    std::uint32_t& head = node.level == 0 ? freeLeaf_ : freeInner_;
    setParent(node, head);
    head = node.index;
}

} // namespace vlgs
