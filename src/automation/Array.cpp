// SPDX-License-Identifier: MIT
#include "automation/Array.h"

#include "automation/Convert.h"
#include "automation/Record.h"
#include "base/Error.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <numeric>

namespace vlgs {

namespace {

ArrayElements elementsOf(VarType type, std::size_t count) {
    switch (type) {
    case VarType::Byte:
        return std::vector<std::uint8_t>(count);
    case VarType::Integer:
    case VarType::Boolean:
        return std::vector<std::int16_t>(count);
    case VarType::Long:
        return std::vector<std::int32_t>(count);
    case VarType::Single:
        return std::vector<float>(count);
    case VarType::Double:
        return std::vector<double>(count);
    case VarType::Currency:
        return std::vector<Currency>(count);
    case VarType::Date:
        return std::vector<Date>(count);
    case VarType::String:
        return std::vector<String>(count);
    case VarType::Object:
        return std::vector<Ref<Object>>(count);
    case VarType::Error:
        return std::vector<ErrorValue>(count);
    case VarType::Variant:
        return std::vector<Variant>(count);
    case VarType::Decimal:
        return std::vector<Variant>(count, Variant(Decimal{}));
    case VarType::Record:
        return std::vector<Variant>(count, Variant::ofRecord(nullptr));
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

std::size_t countOf(std::span<const Dimension> dimensions) {
    std::size_t count = 1;
    for (const auto& dimension : dimensions) {
        const bool inRange = dimension.count >= 0 &&
                             (dimension.count == 0 || std::int64_t{dimension.lower} + dimension.count - 1 <=
                                                          std::numeric_limits<std::int32_t>::max());
        if (!inRange)
            raise(RunTimeError::SubscriptOutOfRange);
        if (__builtin_mul_overflow(count, static_cast<std::size_t>(dimension.count), &count) ||
            count > std::numeric_limits<std::int32_t>::max())
            raise(RunTimeError::OutOfMemory);
    }
    return count;
}

template <class T>
Array adopt(VarType type, std::vector<T> values, std::int32_t lower) {
    Array result(type, {{lower, static_cast<std::int32_t>(values.size())}});
    std::ranges::move(values, result.mutate<T>().begin());
    return result;
}

} // namespace

Array::Array(VarType element, std::vector<Dimension> dimensions) {
    if (dimensions.empty() || dimensions.size() > maximumDimensions)
        raise(RunTimeError::SubscriptOutOfRange);
    auto elements = elementsOf(element, countOf(dimensions));
    data_ = new ArrayData{1, element, std::move(dimensions), std::move(elements)};
}

Array::Array(const Array& other) noexcept : data_(other.data_) {
    if (data_)
        ++data_->references;
}

Array::~Array() {
    if (data_ && --data_->references == 0)
        delete data_;
}

Array Array::vector(VarType element, std::int32_t count, std::int32_t lower) {
    return Array(element, {{lower, count}});
}

Array Array::ofBytes(std::vector<std::uint8_t> bytes) {
    return adopt(VarType::Byte, std::move(bytes), 0);
}
Array Array::ofLongs(std::vector<std::int32_t> numbers) {
    return adopt(VarType::Long, std::move(numbers), 0);
}
ArrayOf<String> Array::ofStrings(std::vector<String> texts) {
    return ArrayOf<String>(adopt(VarType::String, std::move(texts), 0));
}
ArrayOf<Variant> Array::ofVariants(std::vector<Variant> values, std::int32_t lower) {
    return ArrayOf<Variant>(adopt(VarType::Variant, std::move(values), lower));
}

std::int32_t Array::rank() const noexcept {
    return data_ ? static_cast<std::int32_t>(data_->dimensions.size()) : 0;
}

std::span<const Dimension> Array::dimensions() const noexcept {
    return data_ ? std::span<const Dimension>(data_->dimensions) : std::span<const Dimension>();
}

std::int32_t Array::lower(std::int32_t dimension) const {
    if (dimension < 1 || dimension > rank())
        raise(RunTimeError::SubscriptOutOfRange);
    return data_->dimensions[static_cast<std::size_t>(dimension - 1)].lower;
}

std::int32_t Array::upper(std::int32_t dimension) const {
    if (dimension < 1 || dimension > rank())
        raise(RunTimeError::SubscriptOutOfRange);
    return data_->dimensions[static_cast<std::size_t>(dimension - 1)].upper();
}

std::size_t Array::size() const noexcept {
    return data_ ? std::visit([](const auto& values) { return values.size(); }, data_->elements) : 0;
}

std::size_t Array::offsetOf(std::span<const std::int32_t> indices) const {
    if (indices.empty() || indices.size() != static_cast<std::size_t>(rank()))
        raise(RunTimeError::SubscriptOutOfRange);
    std::size_t offset = 0;
    for (std::size_t i = indices.size(); i-- > 0;) {
        const auto& dimension = data_->dimensions[i];
        const auto place = std::int64_t{indices[i]} - dimension.lower;
        if (place < 0 || place >= dimension.count)
            raise(RunTimeError::SubscriptOutOfRange);
        offset = offset * static_cast<std::size_t>(dimension.count) + static_cast<std::size_t>(place);
    }
    return offset;
}

Variant Array::get(std::span<const std::int32_t> indices) const {
    return at(offsetOf(indices));
}

void Array::set(std::span<const std::int32_t> indices, const Variant& value) {
    put(offsetOf(indices), value);
}

Variant Array::at(std::size_t offset) const {
    return std::visit(
        [&](const auto& values) -> Variant {
            if (data_->element == VarType::Boolean)
                return std::get<std::vector<std::int16_t>>(data_->elements)[offset] != 0;
            return values[offset];
        },
        data_->elements);
}

void Array::put(std::size_t offset, const Variant& value) {
    const VarType type = data_->element;
    const Variant converted = type == VarType::Variant ? value : changeType(value, type);
    std::visit(
        [&]<class T>(std::vector<T>& values) {
            if constexpr (std::is_same_v<T, Variant>)
                values[offset] = converted;
            else if constexpr (std::is_same_v<T, std::uint8_t>)
                values[offset] = converted.byte();
            else if constexpr (std::is_same_v<T, std::int16_t>)
                values[offset] = type == VarType::Boolean ? static_cast<std::int16_t>(-converted.boolean())
                                                          : converted.integer();
            else if constexpr (std::is_same_v<T, std::int32_t>)
                values[offset] = converted.number();
            else if constexpr (std::is_same_v<T, float>)
                values[offset] = converted.single();
            else if constexpr (std::is_same_v<T, double>)
                values[offset] = converted.real();
            else if constexpr (std::is_same_v<T, Currency>)
                values[offset] = converted.currency();
            else if constexpr (std::is_same_v<T, Date>)
                values[offset] = converted.date();
            else if constexpr (std::is_same_v<T, String>)
                values[offset] = converted.text();
            else if constexpr (std::is_same_v<T, Ref<Object>>)
                values[offset] = converted.reference();
            else
                values[offset] = ErrorValue{converted.status()};
        },
        own()->elements);
}

void Array::resizeLast(std::int32_t count) {
    if (!data_)
        raise(RunTimeError::SubscriptOutOfRange);
    auto dimensions = data_->dimensions;
    dimensions.back().count = count;
    const auto size = countOf(dimensions);
    ArrayData* data = own();
    std::visit(
        [&]<class T>(std::vector<T>& values) {
            const T filler = [&]() -> T {
                if constexpr (std::is_same_v<T, Variant>) {
                    if (data->element == VarType::Decimal)
                        return Decimal{};
                    if (data->element == VarType::Record)
                        return Variant::ofRecord(nullptr);
                }
                return T{};
            }();
            values.resize(size, filler);
        },
        data->elements);
    data->dimensions = std::move(dimensions);
}

ArrayData* Array::own() {
    if (data_ && data_->references > 1) {
        auto* copy = new ArrayData(*data_);
        copy->references = 1;
        --data_->references;
        data_ = copy;
    }
    return data_;
}

bool operator==(const Array& a, const Array& b) noexcept {
    if (a.data_ == b.data_)
        return true;
    return a.data_ && b.data_ && a.data_->element == b.data_->element &&
           a.data_->dimensions == b.data_->dimensions && a.data_->elements == b.data_->elements;
}

} // namespace vlgs
