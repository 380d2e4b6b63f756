// SPDX-License-Identifier: MIT
// Failures of documents as callers get them: a message of the catalogue that ends with what went wrong.
#pragma once

#include "frame/Errors.h"

#include <new>
#include <string_view>

namespace vlgs {

/// Raises a catalogue error for the failure that is being handled; a line of its own may come before that
/// failure's description.
[[noreturn]] inline void raiseForFailure(const String& source, std::int32_t message,
                                         std::u16string_view lead = {}) {
    String description;
    try {
        throw;
    } catch (const Error& error) {
        description = error.description();
    } catch (const std::bad_alloc&) {
        description = Error(RunTimeError::OutOfMemory).description();
    }
    raiseMessage(source, message, concat(lead, lead.empty() ? u"" : u"\r\n", description));
}

} // namespace vlgs
