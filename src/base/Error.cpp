// SPDX-License-Identifier: MIT
#include "base/Error.h"

#include <utility>

namespace vlgs {

namespace {

struct Text {
    RunTimeError number;
    const char16_t* text;
};

constexpr Text texts[] = {
    {RunTimeError::InvalidProcedureCall, u"Invalid procedure call or argument"},
    {RunTimeError::Overflow, u"Overflow"},
    {RunTimeError::OutOfMemory, u"Out of memory"},
    {RunTimeError::SubscriptOutOfRange, u"Subscript out of range"},
    {RunTimeError::DivisionByZero, u"Division by zero"},
    {RunTimeError::TypeMismatch, u"Type mismatch"},
    {RunTimeError::BadFileNumber, u"Bad file name or number"},
    {RunTimeError::FileNotFound, u"File not found"},
    {RunTimeError::DeviceIoError, u"Device I/O error"},
    {RunTimeError::FileAlreadyExists, u"File already exists"},
    {RunTimeError::DiskFull, u"Disk full"},
    {RunTimeError::PermissionDenied, u"Permission denied"},
    {RunTimeError::PathFileAccessError, u"Path/File access error"},
    {RunTimeError::PathNotFound, u"Path not found"},
    {RunTimeError::ObjectVariableNotSet, u"Object variable or With block variable not set"},
    {RunTimeError::InvalidUseOfNull, u"Invalid use of Null"},
    {RunTimeError::ResourceNotFound, u"Resource with identifier not found"},
    {RunTimeError::CannotCreateObject, u"ActiveX component can't create object"},
    {RunTimeError::NoSuchMember, u"Object doesn't support this property or method"},
    {RunTimeError::AutomationError, u"Automation error"},
    {RunTimeError::NamedArgumentNotFound, u"Named argument not found"},
    {RunTimeError::ArgumentNotOptional, u"Argument not optional"},
    {RunTimeError::WrongNumberOfArguments, u"Wrong number of arguments or invalid property assignment"},
    {RunTimeError::NotACollection, u"Object not a collection"},
    {RunTimeError::KeyAlreadyPresent, u"This key is already associated with an element of this collection"},
    {RunTimeError::NoSuchEvents, u"Object or class does not support the set of events"},
};

} // namespace

Error::Error(std::int32_t number, String source, String description)
    : number_(number), source_(std::move(source)), description_(std::move(description)),
      what_(std::to_string(number_) + " " + source_.toUtf8() + ": " + description_.toUtf8()) {}

Error::Error(RunTimeError number)
    : Error(static_cast<std::int32_t>(number), String(), descriptionOf(static_cast<std::int32_t>(number))) {}

String Error::descriptionOf(std::int32_t number) {
    for (const auto& [code, text] : texts)
        if (static_cast<std::int32_t>(code) == number)
            return text;
    return u"Application-defined or object-defined error";
}

void raise(RunTimeError number) {
    throw Error(number);
}

} // namespace vlgs
