// SPDX-License-Identifier: MIT
// How a failure crosses the boundary: every exception becomes a status, with its number, source and
// description beside it.
#pragma once

#include "com/Ole.h"

#include "base/Error.h"

namespace vlgs::com {

/// The status of an error number. The run time's small numbers travel as 0x800A0000 + n, so that a script
/// reads n again; negative numbers are statuses already.
HRESULT toStatus(std::int32_t number) noexcept;
/// The error number of a status, the reverse of `toStatus`; the automation statuses (member not found, type
/// mismatch …) give the run time's numbers for them.
std::int32_t toNumber(HRESULT status) noexcept;

/// The automation status for the number of a late-bound call that did not come to its member (438, 448 to
/// 450, 13, 6); DISP_E_EXCEPTION for every other number.
HRESULT toCallStatus(std::int32_t number) noexcept;

/// Inside a catch block: stores the exception in the thread's error information, as raised by interface
/// `iid`, and returns its status. `bad_alloc` is 7, anything else that is no `Error` 440.
HRESULT reportFailure(REFIID iid) noexcept;
/// Inside a catch block: stores the exception in `info`, when that is given, and returns DISP_E_EXCEPTION.
HRESULT describeFailure(EXCEPINFO* info) noexcept;

/// Raises the error of a failed call to somebody else's object, with what `info` tells of it.
[[noreturn]] void raiseForeign(HRESULT status, EXCEPINFO& info);
[[noreturn]] void raiseStatus(HRESULT status);

} // namespace vlgs::com
