// SPDX-License-Identifier: MIT
// The one exception type. A failure has a signed 32-bit number, the source that raised it and a description.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <exception>

namespace vlgs {

/// Numbers of the run time's own errors, the ones this library raises.
enum class RunTimeError : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    BadFileNumber = 52,
    FileNotFound = 53,
    DeviceIoError = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccessError = 75,
    PathNotFound = 76,
    ObjectVariableNotSet = 91,
    InvalidUseOfNull = 94,
    ResourceNotFound = 326,
    CannotCreateObject = 429,
    NoSuchMember = 438,
    AutomationError = 440,
    NamedArgumentNotFound = 448,
    ArgumentNotOptional = 449,
    WrongNumberOfArguments = 450,
    NotACollection = 451,
    KeyAlreadyPresent = 457,
    NoSuchEvents = 459,
};

/// First number of the object-defined errors, 0x80040000.
inline constexpr std::int32_t objectErrorBase = -2147221504;

class VLGS_API Error : public std::exception {
  public:
    Error(std::int32_t number, String source, String description);
    /// A run-time error with the run time's own description and no source.
    explicit Error(RunTimeError number);

    std::int32_t number() const noexcept { return number_; }
    const String& source() const noexcept { return source_; }
    const String& description() const noexcept { return description_; }
    bool is(RunTimeError number) const noexcept { return number_ == static_cast<std::int32_t>(number); }

    /// The description in UTF-8, for logs and test output.
    const char* what() const noexcept override { return what_.c_str(); }

    /// The run time's text for one of its numbers, "Application-defined or object-defined error" for others.
    static String descriptionOf(std::int32_t number);

  private:
    std::int32_t number_;
    String source_;
    String description_;
    std::string what_;
};

/// Raises a run-time error: `raise(RunTimeError::TypeMismatch)`.
[[noreturn]] VLGS_API void raise(RunTimeError number);

} // namespace vlgs
