// SPDX-License-Identifier: MIT
#include "automation/LateBound.h"
#include "capi/Boundary.h"
#include "library/Classes.h"
#include "platform/Environment.h"

#include <array>
#include <string>
#include <vector>

using namespace vlgs;
using namespace vlgs::capi;

const char* vlgs_version(void) {
    return VLGS_VERSION_TEXT;
}

const char* vlgs_unknown_settings(void) {
    thread_local std::string lines;
    lines.clear();
    guarded([&] { lines = unknownSettings().toUtf8(); });
    // The text lives as long as its thread.
    return lines.c_str(); // NOLINT(clang-analyzer-cplusplus.InnerPointer)
}

int vlgs_create(const char* name, vlgs_object** out) {
    return guarded([&] { *out = give(createObject(textOf(name))); });
}

void vlgs_retain(vlgs_object* object) {
    if (object)
        from(object)->retain();
}

void vlgs_release(vlgs_object* object) {
    if (object)
        from(object)->release();
}

int vlgs_id_of(vlgs_object* object, const char* name, int32_t* member) {
    return guarded([&] { *member = held(object)->idOf(textOf(name)); });
}

int vlgs_invoke(vlgs_object* object, int32_t member, uint32_t kind, vlgs_value* arguments, size_t count,
                const char* const* names, size_t named, vlgs_value* result) {
    return guarded([&] {
        if (named > count || named > ClassInfo::maximumParameters)
            raise(RunTimeError::WrongNumberOfArguments);
        for (const Variant& argument : from(arguments, count))
            if (argument.isObject() && argument.object())
                checkThread(*argument.object());
        const auto call = [&](std::span<const NamedArgument> byName) {
            Variant value = held(object)->invoke(member, static_cast<InvokeKind>(kind),
                                                 {from(arguments, count - named), byName});
            if (result)
                place(std::move(value), result);
        };
        if (named == 0) // the usual call needs no room for names
            return call({});
        std::array<String, ClassInfo::maximumParameters> texts;
        std::array<NamedArgument, ClassInfo::maximumParameters> byName;
        for (std::size_t i = 0; i < named; ++i) {
            texts[i] = textOf(names[i]);
            byName[i] = {texts[i], &from(arguments + (count - named) + i)};
        }
        call(std::span(byName.data(), named));
    });
}

int vlgs_enumerate(vlgs_object* object, vlgs_object** enumerator) {
    return guarded([&] { *enumerator = give(enumerate(held(object))); });
}

int vlgs_next(vlgs_object* enumerator, vlgs_value* item, int* more) {
    return guarded([&] {
        auto* members = dynamic_cast<Enumerator*>(held(enumerator).get());
        if (!members)
            raise(RunTimeError::NotACollection);
        Variant next;
        const bool found = members->next(next);
        if (found)
            place(std::move(next), item);
        *more = found;
    });
}
