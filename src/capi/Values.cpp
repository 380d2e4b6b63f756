// SPDX-License-Identifier: MIT
#include "automation/Convert.h"
#include "automation/Record.h"
#include "base/CaseFold.h"
#include "capi/Boundary.h"
#include "library/Classes.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>

using namespace vlgs;
using namespace vlgs::capi;

namespace {

const Array& arrayOf(const vlgs_value* value) {
    if (!from(value).isArray())
        raise(RunTimeError::TypeMismatch);
    return from(value).array();
}

void checkRange(const Array& array, std::size_t offset, std::size_t count) {
    if (offset > array.size() || count > array.size() - offset)
        raise(RunTimeError::SubscriptOutOfRange);
}

/// The member of a list whose name, in any case, is that; raises 13 when there is none.
template <class List, class NameOf>
const auto& find(const List& list, const char* name, NameOf nameOf) {
    const String wanted = textOf(name);
    for (const auto& each : list)
        if (equalIgnoringCase(String::fromUtf8(nameOf(each)), wanted))
            return each;
    raise(RunTimeError::TypeMismatch);
}

} // namespace

void vlgs_clear(vlgs_value* values, size_t count) {
    for (Variant& value : from(values, count))
        value = Variant();
}

int vlgs_copy(const vlgs_value* value, vlgs_value* copy) {
    return guarded([&] { place(from(value), copy); });
}

int vlgs_change_type(vlgs_value* value, uint16_t type) {
    return guarded([&] { from(value) = changeType(from(value), static_cast<VarType>(type)); });
}

int vlgs_text_new(const char* text, size_t length, vlgs_value* out) {
    return guarded([&] { place(textOf(text, length), out); });
}

int vlgs_text(const vlgs_value* value, char* buffer, size_t capacity, size_t* length) {
    return guarded([&] {
        if (!from(value).isString())
            raise(RunTimeError::TypeMismatch);
        const std::string text = from(value).text().toUtf8(LoneSurrogates::Kept);
        if (text.size() <= capacity)
            text.copy(buffer, text.size());
        *length = text.size();
    });
}

int vlgs_text_utf16_new(const uint16_t* text, size_t length, vlgs_value* out) {
    return guarded(
        [&] { place(String::build(length, [&](char16_t* to) { std::copy_n(text, length, to); }), out); });
}

int vlgs_text_utf16(const vlgs_value* value, const uint16_t** text, size_t* length) {
    return guarded([&] {
        if (!from(value).isString())
            raise(RunTimeError::TypeMismatch);
        const String& held = from(value).text();
        *text = reinterpret_cast<const uint16_t*>(held.data());
        *length = held.length();
    });
}

int vlgs_array_new(uint16_t element, const vlgs_dimension* dimensions, size_t rank, vlgs_value* out) {
    return guarded([&] {
        if (rank > Array::maximumDimensions)
            raise(RunTimeError::SubscriptOutOfRange);
        std::vector<Dimension> bounds;
        for (const auto& [lower, count] : std::span(dimensions, rank))
            bounds.push_back({lower, count});
        place(Array(static_cast<VarType>(element), std::move(bounds)), out);
    });
}

int vlgs_array_shape(const vlgs_value* array, const vlgs_dimension** dimensions, size_t* rank) {
    return guarded([&] {
        const auto bounds = arrayOf(array).dimensions();
        *dimensions = reinterpret_cast<const vlgs_dimension*>(bounds.data());
        *rank = bounds.size();
    });
}

int vlgs_array_read(const vlgs_value* array, size_t offset, size_t count, vlgs_value* elements) {
    return guarded([&] {
        const Array& source = arrayOf(array);
        checkRange(source, offset, count);
        for (std::size_t i = 0; i < count; ++i)
            place(source.at(offset + i), elements + i);
    });
}

int vlgs_array_write(vlgs_value* array, size_t offset, size_t count, const vlgs_value* elements) {
    return guarded([&] {
        checkRange(arrayOf(array), offset, count);
        Array& target = from(array).array();
        for (std::size_t i = 0; i < count; ++i)
            target.put(offset + i, from(elements + i));
    });
}

int vlgs_bytes_new(const void* data, size_t size, vlgs_value* out) {
    return guarded([&] {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        place(Array::ofBytes(std::vector<std::uint8_t>(bytes, bytes + size)), out);
    });
}

int vlgs_bytes(const vlgs_value* array, const uint8_t** data, size_t* size) {
    return guarded([&] {
        if (arrayOf(array).element() != VarType::Byte && arrayOf(array).rank() != 0)
            raise(RunTimeError::TypeMismatch);
        const auto bytes = arrayOf(array).as<std::uint8_t>();
        *data = bytes.data();
        *size = bytes.size();
    });
}

int vlgs_record_new(const char* name, const char* const* fields, const vlgs_value* values, size_t count,
                    vlgs_value* out) {
    return guarded([&] {
        const RecordInfo* info = find(records(), name, [](const RecordInfo* each) { return each->name; });
        std::vector<Variant> texts(info->fields.size(), Variant(String()));
        for (std::size_t i = 0; i < count; ++i) {
            const auto& field = find(info->fields, fields[i], std::identity{});
            texts[static_cast<std::size_t>(&field - info->fields.data())] = toText(from(values + i));
        }
        place(Variant::ofRecord(make<Record>(*info, std::move(texts))), out);
    });
}

int vlgs_record(const vlgs_value* record, const char** name, size_t* count) {
    return guarded([&] {
        if (!from(record).is(VarType::Record))
            raise(RunTimeError::TypeMismatch);
        const auto held = from(record).record();
        *name = held ? held->info().name.data() : nullptr;
        *count = held ? held->fields().size() : 0;
    });
}

int vlgs_record_field(const vlgs_value* record, size_t index, const char** name, vlgs_value* value) {
    return guarded([&] {
        if (!from(record).is(VarType::Record))
            raise(RunTimeError::TypeMismatch);
        const auto held = from(record).record();
        if (!held || index >= held->fields().size())
            raise(RunTimeError::SubscriptOutOfRange);
        place(held->fields()[index], value);
        *name = held->info().fields[index].data();
    });
}
