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
        printValue(out, shownAs(value.reference()), item, depth + 1);
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

} // namespace

Variant shownAs(const Ref<Object>& object) {
    if (isDocument(*object))
        return call(object, u"GetStream", true);
    if (auto members = membersOf(object))
        return Array::ofVariants(std::move(*members));
    return object->invoke(defaultMember, InvokeKind::MethodOrGet, {});
}

void print(std::ostream& out, const Variant& value) {
    printValue(out, value, false, 0);
}

} // namespace vlgs::cli
