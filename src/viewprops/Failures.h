// How the routines of view properties report what goes wrong inside them.
#pragma once

#include "frame/Errors.h"

#include <new>

namespace vlgs {

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

} // namespace vlgs
