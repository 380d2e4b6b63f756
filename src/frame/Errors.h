// How the component raises its numbered errors: number, source, and a description from the message catalogue.
#pragma once

#include "automation/Error.h"
#include "automation/String.h"

namespace vlgs {

/// Raises the catalogue's error for a message code: number code + 0x80040000, the description the catalogue's
/// text and, when `sExtra` is not empty, CR LF and `sExtra`. A number that already carries the base is taken
/// as it is; `lMessage` then receives the code without it. A positive code with bit 18 set overflows (6).
[[noreturn]] void RaiseCatalogueError(const String& sSource, std::int32_t& lMessage, const String& sExtra);

/// The same for a code that nobody reads back: `raiseMessage(source, eMsg_SectionNameCannotBeBlank)`.
[[noreturn]] void raiseMessage(const String& sSource, std::int32_t lMessage, const String& sExtra = {});

/// Keeps an error for `RaiseSavedError`, one for each thread; a later one replaces it.
void SaveError(const Error& error);
/// Raises the saved error and forgets it; without one nothing happens.
void RaiseSavedError();

} // namespace vlgs
