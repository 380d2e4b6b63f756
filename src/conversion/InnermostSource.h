// How the conversion routines pass a failure on: it keeps the source of the innermost routine that gave it
// one.
#pragma once

#include "frame/Errors.h"

namespace vlgs {

/// Runs a routine; an error without a source leaves it under `sSource`, every other error as it is.
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

} // namespace vlgs
