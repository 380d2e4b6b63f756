// SPDX-License-Identifier: MIT
#include "Print.h"

#include "HostText.h"
#include "automation/Array.h"
#include "automation/ClassInfo.h"
#include "automation/Convert.h"
#include "automation/LateBound.h"
#include "automation/Record.h"
#include "base/Ascii.h"
#include "base/Error.h"
#include "base/WideNumber.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace vlgs::cli {

namespace {

// Collections may contain themselves; nobody reads deeper than this.
constexpr int maximumDepth = 16;

/// The members of a collection; nothing for an object that is none.
std::optional<std::vector<Variant>> membersOf(const Ref<Object>& object) {
    try {
        const auto enumerator = enumerate(object);
        std::vector<Variant> members;
        for (Variant item; enumerator->next(item);)
            members.push_back(std::move(item));
        return members;
    } catch (const Error& error) {
        if (!error.is(RunTimeError::NotACollection))
            throw;
        return std::nullopt;
    }
}

bool isDocument(const Object& object) {
    return object.classInfo() && object.classInfo()->name() == "INIFile";
}

/// What an object is shown as: a document's text, a collection's members, the value of its default member.
Variant shown(const Ref<Object>& object) {
    if (isDocument(*object))
        return call(object, u"GetStream", true);
    if (auto members = membersOf(object))
        return Array::ofVariants(std::move(*members));
    return object->invoke(defaultMember, InvokeKind::MethodOrGet, {});
}

/// Offsets of the elements with the last index fastest, the order in which one reads rows.
std::vector<std::size_t> readingOrder(const Array& array) {
    std::vector<std::size_t> offsets{0};
    std::size_t stride = 1;
    for (const auto& dimension : array.dimensions()) {
        std::vector<std::size_t> next;
        next.reserve(offsets.size() * static_cast<std::size_t>(dimension.count));
        for (const std::size_t offset : offsets)
            for (std::int32_t i = 0; i < dimension.count; ++i)
                next.push_back(offset + static_cast<std::size_t>(i) * stride);
        offsets = std::move(next);
        stride *= static_cast<std::size_t>(dimension.count);
    }
    return offsets;
}

void printLine(std::ostream& out, std::u16string_view text) {
    out << toHost(text);
    if (!text.ends_with(u'\n'))
        out << '\n';
}

/// Prints a value; `item` is one of several, which has its line even when it is nothing.
void printValue(std::ostream& out, const Variant& value, bool item, int depth) {
    if (value.isArray()) {
        for (const std::size_t offset : readingOrder(value.array()))
            printValue(out, value.array().at(offset), true, depth + 1);
    } else if (value.is(VarType::Record) && value.record()) {
        const auto record = value.record();
        for (std::size_t i = 0; i < record->fields().size(); ++i)
            printLine(out,
                      concat(String::fromUtf8(record->info().fields[i]), u"=", toText(record->fields()[i])));
    } else if (value.isObject() && value.object() && depth < maximumDepth) {
        printValue(out, shown(value.reference()), item, depth + 1);
    } else if (value.isObject() && value.object()) {
        printLine(out, u"...");
    } else if (value.is(VarType::Error) && !value.isMissing()) {
        printLine(out, concat(u"Error ", toText(value.status())));
    } else if (value.isEmpty() || value.isNull() || value.isMissing() || value.isObject() ||
               value.is(VarType::Record)) {
        if (item)
            out << '\n';
    } else {
        printLine(out, toText(value));
    }
}

// ---- JSON -----------------------------------------------------------------------------------------------

void writeText(std::ostream& out, std::u16string_view text) {
    out << '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const bool pair = c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
                          text[i + 1] <= 0xDFFF;
        if (c == u'"' || c == u'\\') {
            out << '\\' << static_cast<char>(c);
        } else if (pair) {
            out << String(text.substr(i++, 2)).toUtf8();
        } else if (c < 0x20 || c == 0x7F || (c >= 0xD800 && c <= 0xDFFF)) {
            out << "\\u";
            for (int shift = 12; shift >= 0; shift -= 4)
                out << static_cast<char>(ascii::lowerHexDigits[c >> shift & 15]);
        } else {
            out << String(1, c).toUtf8();
        }
    }
    out << '"';
}
void writeText(std::ostream& out, std::string_view text) {
    writeText(out, String::fromUtf8(text).view());
}

template <class Number>
void writeNumber(std::ostream& out, Number number) {
    if (!std::isfinite(number)) {
        out << "null";
        return;
    }
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    out << std::string_view(text, static_cast<std::size_t>(end - text));
}

void writeValue(std::ostream& out, const Variant& value, int depth);

/// A list of the elements; lists of lists for more dimensions.
void writeElements(std::ostream& out, const Array& array, std::size_t dimension, std::size_t offset,
                   std::size_t stride, int depth) {
    const auto dimensions = array.dimensions();
    if (dimension == dimensions.size()) {
        if (dimension == 0)
            out << "[]";
        else
            writeValue(out, array.at(offset), depth + 1);
        return;
    }
    out << '[';
    const auto count = static_cast<std::size_t>(dimensions[dimension].count);
    for (std::size_t i = 0; i < count; ++i) {
        out << (i ? ", " : "");
        writeElements(out, array, dimension + 1, offset + i * stride, stride * count, depth);
    }
    out << ']';
}

void writeRecord(std::ostream& out, const Record& record, int depth) {
    out << '{';
    for (std::size_t i = 0; i < record.fields().size(); ++i) {
        out << (i ? ", " : "");
        writeText(out, record.info().fields[i]);
        out << ": ";
        writeValue(out, record.fields()[i], depth + 1);
    }
    out << '}';
}

void writeValue(std::ostream& out, const Variant& value, int depth) {
    if (value.isArray()) {
        writeElements(out, value.array(), 0, 0, 1, depth);
        return;
    }
    switch (value.type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Byte:
        out << toLong(value);
        break;
    case VarType::Error:
        out << value.status();
        break;
    case VarType::Single:
        writeNumber(out, value.single());
        break;
    case VarType::Double:
        writeNumber(out, value.real());
        break;
    case VarType::Boolean:
        out << (value.boolean() ? "true" : "false");
        break;
    case VarType::Currency: {
        const auto units = value.currency().units;
        const auto magnitude =
            units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
        out << (units < 0 ? "-" : "") << decimalText(WideNumber(0, magnitude), 4);
        break;
    }
    case VarType::Decimal: {
        const Decimal number = value.decimal();
        out << (number.sign ? "-" : "") << decimalText(WideNumber(number.high, number.low), number.scale);
        break;
    }
    case VarType::String:
        writeText(out, value.text().view());
        break;
    case VarType::Date:
        writeText(out, toText(value).view());
        break;
    case VarType::Record:
        if (value.record())
            return writeRecord(out, *value.record(), depth);
        out << "null";
        break;
    case VarType::Object:
        if (value.object() && depth < maximumDepth)
            return writeValue(out, shown(value.reference()), depth + 1);
        [[fallthrough]];
    default:
        out << "null";
    }
}

void writeTyped(std::ostream& out, const Variant& value) {
    out << "{\"type\": " << code(value.type());
    if (value.isArray()) {
        out << ", \"lower\": [";
        const char* separator = "";
        for (const auto& dimension : value.array().dimensions())
            out << std::exchange(separator, ", ") << dimension.lower;
        out << ']';
    }
    if (value.isObject() && value.object() && value.object()->classInfo()) {
        out << ", \"class\": ";
        writeText(out, value.object()->classInfo()->programmaticId().view());
    }
    out << ", \"value\": ";
    writeValue(out, value, 0);
}

} // namespace

void print(std::ostream& out, const Variant& value) {
    printValue(out, value, false, 0);
}

void printJsonText(std::ostream& out, std::u16string_view text) {
    writeText(out, text);
}

void printJson(std::ostream& out, const Variant& value, const std::vector<WrittenArgument>& arguments) {
    writeTyped(out, value);
    const char* separator = ", \"arguments\": {";
    for (const auto& [name, argument] : arguments) {
        out << std::exchange(separator, ", ");
        writeText(out, name);
        out << ": ";
        writeTyped(out, *argument);
        out << '}';
    }
    out << (arguments.empty() ? "}\n" : "}}\n");
}

} // namespace vlgs::cli
