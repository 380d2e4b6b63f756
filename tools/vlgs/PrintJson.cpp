// SPDX-License-Identifier: MIT
#include "Document.h"
#include "Print.h"
#include "TypeNames.h"
#include "automation/Array.h"
#include "automation/ClassInfo.h"
#include "automation/Convert.h"
#include "automation/LateBound.h"
#include "automation/Record.h"
#include "base/WideNumber.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace vlgs::cli {

namespace {

// Collections may contain themselves; nobody reads deeper than this.
constexpr int maximumDepth = 16;

template <class Number>
void writeReal(Json& json, Number number) {
    if (!std::isfinite(number))
        return json.null();
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    json.raw(std::string_view(text, static_cast<std::size_t>(end - text)));
}

std::string digitsOf(Currency amount) {
    const auto units = amount.units;
    const auto magnitude =
        units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    return (units < 0 ? "-" : "") + decimalText(WideNumber(0, magnitude), 4);
}

std::string digitsOf(const Decimal& number) {
    return (number.sign ? "-" : "") + decimalText(WideNumber(number.high, number.low), number.scale);
}

void writeValue(Json& json, const Variant& value, int depth);

/// A list of the elements; lists of lists for more dimensions.
void writeElements(Json& json, const Array& array, std::size_t dimension, std::size_t offset,
                   std::size_t stride, int depth) {
    const auto dimensions = array.dimensions();
    if (dimension > 0 && dimension == dimensions.size())
        return writeValue(json, array.at(offset), depth + 1);
    json.array([&] {
        if (dimensions.empty())
            return;
        const auto count = static_cast<std::size_t>(dimensions[dimension].count);
        for (std::size_t i = 0; i < count; ++i)
            writeElements(json, array, dimension + 1, offset + i * stride, stride * count, depth);
    });
}

void writeRecord(Json& json, const Record& record, int depth) {
    json.object([&] {
        for (std::size_t i = 0; i < record.fields().size(); ++i) {
            json.name(record.info().fields[i]);
            writeValue(json, record.fields()[i], depth + 1);
        }
    });
}

/// The run time's dictionary by its keys, a document by its sections, everything else as it is shown.
void writeObject(Json& json, const Ref<Object>& object, int depth) {
    if (const auto* document = dynamic_cast<const INIFile*>(object.get()))
        return writeDocument(json, *document);
    if (const auto* type = object->classInfo(); !type || type->name() != "Dictionary")
        return writeValue(json, shownAs(object), depth + 1);
    json.object([&] {
        const Variant keys = call(object, u"Keys");
        for (std::size_t i = 0; i < keys.array().size(); ++i) {
            const Variant key = keys.array().at(i);
            json.name(key.isObject() ? String(u"?") : toText(key));
            writeValue(json, call(object, u"Item", key), depth + 1);
        }
    });
}

void writeValue(Json& json, const Variant& value, int depth) {
    if (value.isArray())
        return writeElements(json, value.array(), 0, 0, 1, depth);
    switch (value.type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Byte:
        return json.raw(std::to_string(toLong(value)));
    case VarType::Error:
        return value.isMissing() ? json.null() : json.raw(std::to_string(value.status()));
    case VarType::Single:
        return writeReal(json, value.single());
    case VarType::Double:
        return writeReal(json, value.real());
    case VarType::Boolean:
        return json.value(value.boolean());
    case VarType::Currency:
        return json.raw(digitsOf(value.currency()));
    case VarType::Decimal:
        return json.raw(digitsOf(value.decimal()));
    case VarType::String:
        return json.value(value.text().view());
    case VarType::Date:
        return json.value(isoText(value.date()));
    case VarType::Record:
        return value.record() ? writeRecord(json, *value.record(), depth) : json.null();
    case VarType::Object:
        return value.object() && depth < maximumDepth ? writeObject(json, value.reference(), depth)
                                                      : json.null();
    default:
        json.null();
    }
}

void writeTyped(Json& json, const Variant& value) {
    json.field("type", value.isMissing() ? "Missing" : typeName(value.type()));
    if (value.isArray()) {
        json.name("lower");
        json.array([&] {
            for (const auto& dimension : value.array().dimensions())
                json.raw(std::to_string(dimension.lower));
        });
    }
    if (value.isObject() && value.object() && value.object()->classInfo())
        json.field("class", value.object()->classInfo()->programmaticId().view());
    if (value.is(VarType::Record) && value.record())
        json.field("record", value.record()->info().name);
    json.name("value");
    writeValue(json, value, 0);
}

} // namespace

std::string isoText(Date date) {
    const auto parts = partsOf(date);
    char text[64];
    const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", parts.year,
                                     parts.month, parts.day, parts.hour, parts.minute, parts.second);
    return {text, static_cast<std::size_t>(length)};
}

void printJson(std::ostream& out, const Variant& value, const std::vector<WrittenArgument>& arguments) {
    Json json(out);
    json.object([&] {
        writeTyped(json, value);
        if (arguments.empty())
            return;
        json.name("arguments");
        json.object([&] {
            for (const auto& argument : arguments) {
                json.name(argument.name);
                json.object([&] { writeTyped(json, *argument.value); });
            }
        });
    });
    json.end();
}

} // namespace vlgs::cli
