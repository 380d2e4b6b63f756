// SPDX-License-Identifier: MIT
// Arrays of automation: 1 to 60 dimensions, each with its own bounds, elements of one type.
//
// Invariant: an Array is either null (no dimensions, no elements) or shares a block {element type, bounds,
// elements}; whoever changes a shared block copies it first. The first dimension varies fastest in memory.
#pragma once

#include "automation/Variant.h"

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace vlgs {

struct Dimension {
    std::int32_t lower = 0;
    std::int32_t count = 0;
    std::int32_t upper() const noexcept { return static_cast<std::int32_t>(std::int64_t{lower} + count - 1); }
    friend bool operator==(const Dimension&, const Dimension&) = default;
};

/// The elements by their C++ type. Booleans are stored as automation stores them, -1 and 0.
using ArrayElements = std::variant<std::vector<std::uint8_t>, std::vector<std::int16_t>,
                                   std::vector<std::int32_t>, std::vector<float>, std::vector<double>,
                                   std::vector<Currency>, std::vector<Date>, std::vector<String>,
                                   std::vector<Ref<Object>>, std::vector<ErrorValue>, std::vector<Variant>>;

class ArrayData {
  public:
    std::uint32_t references = 1;
    VarType element = VarType::Variant;
    std::vector<Dimension> dimensions;
    ArrayElements elements;
};

template <class T>
class ArrayOf;

class VLGS_API Array {
  public:
    static constexpr std::size_t maximumDimensions = 60;

    Array() noexcept = default;
    /// An array of empty (zero, null) elements. Raises 9 for no or more than 60 dimensions or a negative
    /// count, 13 for an element type that arrays cannot hold, 7 when there is no memory for it.
    Array(VarType element, std::vector<Dimension> dimensions);
    /// One dimension: `Array::vector(VarType::Long, 10)` has the indices 0 to 9.
    static Array vector(VarType element, std::int32_t count, std::int32_t lower = 0);
    static Array ofBytes(std::vector<std::uint8_t> bytes);
    static Array ofLongs(std::vector<std::int32_t> numbers);
    static ArrayOf<String> ofStrings(std::vector<String> texts);
    static ArrayOf<Variant> ofVariants(std::vector<Variant> values, std::int32_t lower = 0);

    Array(const Array& other) noexcept;
    Array(Array&& other) noexcept : data_(std::exchange(other.data_, nullptr)) {}
    ~Array();
    Array& operator=(Array other) noexcept {
        std::swap(data_, other.data_);
        return *this;
    }

    VarType element() const noexcept { return data_ ? data_->element : VarType::Variant; }
    /// Number of dimensions; 0 for an array that was never given any.
    std::int32_t rank() const noexcept;
    std::span<const Dimension> dimensions() const noexcept;
    /// Bounds of a dimension, counted from 1. Raise 9 for a dimension that is not there.
    std::int32_t lower(std::int32_t dimension = 1) const;
    std::int32_t upper(std::int32_t dimension = 1) const;
    /// Number of elements in all dimensions together.
    std::size_t size() const noexcept;

    /// An element by its indices, one for each dimension. Raise 9 for an index out of bounds or a wrong
    /// number of indices; `set` raises what the conversion to the element type raises.
    Variant get(std::span<const std::int32_t> indices) const;
    Variant get(std::int32_t index) const { return get(std::span(&index, 1)); }
    void set(std::span<const std::int32_t> indices, const Variant& value);
    void set(std::int32_t index, const Variant& value) { set(std::span(&index, 1), value); }

    /// An element by its place in memory, counted from 0. REQUIRES: offset < size().
    Variant at(std::size_t offset) const;
    void put(std::size_t offset, const Variant& value);

    /// Gives the last dimension `count` elements, keeping what stays; the other bounds do not change.
    void resizeLast(std::int32_t count);

    /// The elements in memory order: `array.as<std::int32_t>()`. REQUIRES: the element type matches.
    template <class T>
    std::span<const T> as() const noexcept {
        return data_ ? std::span<const T>(std::get<std::vector<T>>(data_->elements)) : std::span<const T>();
    }
    template <class T>
    std::span<T> mutate() {
        return own() ? std::span<T>(std::get<std::vector<T>>(data_->elements)) : std::span<T>();
    }
    template <class T>
    bool holds() const noexcept {
        return data_ && std::holds_alternative<std::vector<T>>(data_->elements);
    }

    friend bool operator==(const Array& a, const Array& b) noexcept;

  private:
    friend class Variant;
    std::size_t offsetOf(std::span<const std::int32_t> indices) const;
    ArrayData* own(); // the block, not shared with anybody
    ArrayData* data_ = nullptr;
};

/// An array with elements of one known type. A member's result is one, so that the description of its class
/// tells the type of what callers receive.
template <class T>
class ArrayOf final : public Array {
  private:
    friend class Array;
    explicit ArrayOf(Array elements) noexcept : Array(std::move(elements)) {}
};

} // namespace vlgs
