// SPDX-License-Identifier: MIT
#include "com/Failure.h"

#include <iterator>
#include <optional>

namespace vlgs::com {

namespace {

constexpr auto runTimeFacility = static_cast<HRESULT>(0x800A0000);

struct StatusNumber {
    HRESULT status;
    RunTimeError number;
};
// The automation statuses that have a number of the run time.
constexpr StatusNumber statusNumbers[] = {
    {DISP_E_UNKNOWNINTERFACE, RunTimeError::NoSuchMember},
    {DISP_E_MEMBERNOTFOUND, RunTimeError::NoSuchMember},
    {DISP_E_UNKNOWNNAME, RunTimeError::NoSuchMember},
    {DISP_E_PARAMNOTFOUND, RunTimeError::NamedArgumentNotFound},
    {DISP_E_NONAMEDARGS, RunTimeError::NamedArgumentNotFound},
    {DISP_E_PARAMNOTOPTIONAL, RunTimeError::ArgumentNotOptional},
    {DISP_E_BADPARAMCOUNT, RunTimeError::WrongNumberOfArguments},
    {DISP_E_NOTACOLLECTION, RunTimeError::NotACollection},
    {DISP_E_TYPEMISMATCH, RunTimeError::TypeMismatch},
    {DISP_E_BADVARTYPE, RunTimeError::TypeMismatch},
    {DISP_E_OVERFLOW, RunTimeError::Overflow},
    {DISP_E_BADINDEX, RunTimeError::SubscriptOutOfRange},
    {DISP_E_DIVBYZERO, RunTimeError::DivisionByZero},
    {E_OUTOFMEMORY, RunTimeError::OutOfMemory},
    {E_INVALIDARG, RunTimeError::InvalidProcedureCall},
};

// Those of them that a call answers when it does not come to its member.
constexpr HRESULT callStatuses[] = {
    DISP_E_MEMBERNOTFOUND, DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL,
    DISP_E_BADPARAMCOUNT,  DISP_E_TYPEMISMATCH,  DISP_E_OVERFLOW,
};

/// The exception in flight as an Error, nothing when there is not even memory to tell of it.
std::optional<Error> currentError() noexcept {
    try {
        try {
            throw;
        } catch (const Error& error) {
            return error;
        } catch (const std::bad_alloc&) {
            return Error(RunTimeError::OutOfMemory);
        } catch (...) {
            return Error(RunTimeError::AutomationError);
        }
    } catch (...) {
        return std::nullopt;
    }
}

BSTR orNull(const String& text) noexcept {
    return text.empty() ? nullptr : SysAllocStringLen(wide(text.data()), static_cast<UINT>(text.length()));
}

} // namespace

HRESULT toStatus(std::int32_t number) noexcept {
    if (number < 0)
        return number;
    return number == 0 ? E_FAIL : runTimeFacility | (number & 0xFFFF);
}

std::int32_t toNumber(HRESULT status) noexcept {
    if ((static_cast<std::uint32_t>(status) & 0xFFFF0000u) == static_cast<std::uint32_t>(runTimeFacility))
        return status & 0xFFFF;
    for (const auto& known : statusNumbers)
        if (known.status == status)
            return static_cast<std::int32_t>(known.number);
    return status;
}

HRESULT toCallStatus(std::int32_t number) noexcept {
    for (const HRESULT status : callStatuses)
        if (toNumber(status) == number)
            return status;
    return DISP_E_EXCEPTION;
}

HRESULT reportFailure(REFIID iid) noexcept {
    const auto error = currentError();
    if (!error)
        return toStatus(static_cast<std::int32_t>(RunTimeError::OutOfMemory));
    ComPtr<ICreateErrorInfo> creator;
    if (SUCCEEDED(CreateErrorInfo(creator.put()))) {
        creator->SetGUID(iid);
        creator->SetSource(const_cast<LPOLESTR>(wide(error->source().data())));
        creator->SetDescription(const_cast<LPOLESTR>(wide(error->description().data())));
        if (const auto info = queryFor<IErrorInfo>(creator.get()))
            SetErrorInfo(0, info.get());
    }
    return toStatus(error->number());
}

HRESULT describeFailure(EXCEPINFO* info) noexcept {
    const auto error = currentError();
    if (info) {
        *info = {};
        info->scode =
            toStatus(error ? error->number() : static_cast<std::int32_t>(RunTimeError::OutOfMemory));
        if (error) {
            info->bstrSource = orNull(error->source());
            info->bstrDescription = orNull(error->description());
        }
    }
    return DISP_E_EXCEPTION;
}

void raiseStatus(HRESULT status) {
    const std::int32_t number = toNumber(status);
    throw Error(number, String(),
                number == status ? String(u"Automation error") : Error::descriptionOf(number));
}

void raiseForeign(HRESULT status, EXCEPINFO& info) {
    if (status != DISP_E_EXCEPTION)
        raiseStatus(status);
    if (info.pfnDeferredFillIn)
        info.pfnDeferredFillIn(&info);
    const std::int32_t number = info.wCode ? info.wCode : toNumber(info.scode);
    const String source = toString(info.bstrSource);
    String description = toString(info.bstrDescription);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrHelpFile);
    if (description.empty())
        description = Error::descriptionOf(number);
    throw Error(number, source, std::move(description));
}

} // namespace vlgs::com
