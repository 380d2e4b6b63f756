// SPDX-License-Identifier: MIT
#include "capi/Boundary.h"

#include <string>

namespace vlgs::capi {

namespace {

struct KeptError {
    vlgs_error error{};
    std::string source;
    std::string description;

    // A text that finds no memory stays away; the number always arrives.
    void set(std::int32_t number, const String& from, const String& text) noexcept {
        source.clear();
        description.clear();
        try {
            source = from.toUtf8(LoneSurrogates::Kept);
            description = text.toUtf8(LoneSurrogates::Kept);
        } catch (const std::bad_alloc&) {
        }
        error = {number, source.c_str(), source.size(), description.c_str(), description.size()};
    }
    void set(RunTimeError number) noexcept {
        const auto code = static_cast<std::int32_t>(number);
        try {
            set(code, {}, Error::descriptionOf(code));
        } catch (...) {
            set(code, {}, {});
        }
    }
};
thread_local KeptError kept;

} // namespace

void keepCurrentException() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        kept.set(error.number(), error.source(), error.description());
    } catch (const std::bad_alloc&) {
        kept.set(RunTimeError::OutOfMemory);
    } catch (...) {
        kept.set(RunTimeError::AutomationError);
    }
}

void raiseKeptError() {
    throw Error(kept.error.number, textOf(kept.source.data(), kept.source.size()),
                textOf(kept.description.data(), kept.description.size()));
}

void checkThread(const Object& object) {
    constexpr std::int32_t wrongThread = -2147417842; // automation's status for it
    if (!object.isOfThisThread())
        throw Error(wrongThread, {}, u"The object is used on a thread that did not make it");
}

Ref<Object> held(vlgs_object* object) {
    if (!object)
        raise(RunTimeError::ObjectVariableNotSet);
    checkThread(*from(object));
    return Ref<Object>(from(object));
}

} // namespace vlgs::capi

using namespace vlgs;
using namespace vlgs::capi;

const vlgs_error* vlgs_last_error(void) {
    return &kept.error;
}

void vlgs_set_error(int32_t number, const char* source, size_t source_length, const char* description,
                    size_t description_length) {
    guarded(
        [&] { throw Error(number, textOf(source, source_length), textOf(description, description_length)); });
}
