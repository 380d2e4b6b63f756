// SPDX-License-Identifier: MIT
// How the component raises its numbered errors: number, source, and a description from the message catalogue.
#pragma once

#include "base/Error.h"
#include "base/String.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"

#include <new>

namespace vlgs {

/// The thread's message catalogue, made and loaded ("VlComRes.dll" in the library's folder) when there is
/// none or the one there is says that it is not initialised. Raises 53 when the resources are not there.
Ref<MessageCatalogue> GetMessageCatalogue();

/// Raises the catalogue's error for a message code: number code + 0x80040000, the description the catalogue's
/// text and, when `sExtra` is not empty, CR LF and `sExtra`. A number that already carries the base is taken
/// as it is; `lMessage` then receives the code without it. A positive code with bit 18 set overflows (6).
[[noreturn]] void RaiseCatalogueError(const String& sSource, std::int32_t& lMessage, const String& sExtra);

/// The same for a code that nobody reads back: `raiseMessage(source, eMsg_SectionNameCannotBeBlank)`.
[[noreturn]] void raiseMessage(const String& sSource, std::int32_t lMessage, const String& sExtra = {});

/// For handlers: raises the error that is being handled again, with its own number and description, under
/// another source. Running out of memory becomes error 7.
///
///     } catch (...) {
///         reraise(u"VlGeneralServices.modFiles.g_ResolvePath");
///     }
[[noreturn]] void reraise(const String& sSource);

/// The same for a whole routine:
///
///     return underSource(u"VlGeneralServices.modFiles.g_ResolvePath", [&] { … });
template <class Routine>
auto underSource(const char16_t* sSource, Routine&& routine) -> decltype(routine()) {
    try {
        return routine();
    } catch (...) {
        reraise(sSource);
    }
}

/// The same, but an error that already has a source leaves the routine as it is: it keeps that of the
/// innermost routine which gave it one.
template <class Routine>
auto underInnermostSource(const char16_t* sSource, Routine&& routine) -> decltype(routine()) {
    try {
        return routine();
    } catch (const Error& error) {
        if (!error.source().empty())
            throw;
        reraise(sSource);
    }
}

/// Runs a routine and raises a message of the catalogue for every failure inside it, with the description of
/// that failure as the extra text.
template <class Routine>
auto underMessage(const char16_t* sSource, enumMessages eMessage, Routine&& routine) -> decltype(routine()) {
    try {
        return routine();
    } catch (const Error& error) {
        raiseMessage(sSource, eMessage, error.description());
    } catch (const std::bad_alloc&) {
        raiseMessage(sSource, eMessage, Error(RunTimeError::OutOfMemory).description());
    }
}

/// Keeps an error for `RaiseSavedError`, one for each thread; a later one replaces it.
void SaveError(const Error& oErr);
/// Keeps the error that is being handled; outside a handler nothing happens.
void SaveError();
/// Raises the saved error and forgets it; without one nothing happens.
void RaiseSavedError();

} // namespace vlgs
