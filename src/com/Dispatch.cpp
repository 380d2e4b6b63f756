// SPDX-License-Identifier: MIT
#include "com/Face.h"

#include "automation/CallError.h"
#include "automation/ClassDescription.h"
#include "com/Failure.h"
#include "com/Values.h"

#include <algorithm>
#include <array>
#include <exception>
#include <memory_resource>
#include <vector>

namespace vlgs::com {

namespace {

/// The arguments of one call as the library takes them. Automation hands them over last first, the named ones
/// before the others; the value of a property write is named DISPID_PROPERTYPUT.
class IncomingArguments {
  public:
    explicit IncomingArguments(const DISPPARAMS& given) : given_(given) {}
    IncomingArguments(const IncomingArguments&) = delete;
    IncomingArguments& operator=(const IncomingArguments&) = delete;

    /// Raises CallError with 13 for a value that the library cannot hold, with 5 for a null reference.
    void read(InvokeKind kind) {
        const UINT named = given_.cNamedArgs;
        values_.reserve(given_.cArgs);
        sources_.reserve(given_.cArgs);
        for (UINT i = given_.cArgs; i-- > named;)
            add(given_.rgvarg[i]);
        for (UINT i = 0; i < named; ++i)
            add(given_.rgvarg[i]);
        const bool valueIsNamed =
            named > 0 && given_.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT && writes(kind);
        const std::size_t byPlace = given_.cArgs - named;
        arguments_.positional = {values_.data(), byPlace + (valueIsNamed ? 1 : 0)};
        named_.reserve(named);
        for (std::size_t i = arguments_.positional.size(); i < values_.size(); ++i)
            named_.push_back(
                {.name = {}, .value = &values_[i], .place = given_.rgdispidNamedArgs[i - byPlace]});
        arguments_.named = named_;
    }

    const Arguments& get() const noexcept { return arguments_; }

    /// Hands changed by-reference arguments back to the caller's variables. One that does not take its value
    /// leaves no other without; the first such failure is raised.
    void writeBack() {
        std::exception_ptr failure;
        for (std::size_t i = 0; byReference_ >> i; ++i) {
            if (!(byReference_ >> i & 1) || !(sources_[i]->vt & VT_BYREF))
                continue;
            try {
                assign(*sources_[i], values_[i]);
            } catch (const std::exception&) {
                failure = failure ? failure : std::current_exception();
            }
        }
        if (failure)
            std::rethrow_exception(failure);
    }

    /// The place in the caller's array of an argument.
    UINT indexOf(std::size_t argument) const noexcept {
        return static_cast<UINT>(sources_[argument] - given_.rgvarg);
    }

  private:
    void add(VARIANT& source) {
        sources_.push_back(&source);
        try {
            values_.push_back(fromVariant(source));
        } catch (const Error& error) {
            throw CallError(error, arguments_, values_.size());
        }
    }

    static constexpr std::size_t usual = ClassInfo::maximumParameters;
    static constexpr std::size_t entry = sizeof(Variant) + sizeof(VARIANT*) + sizeof(NamedArgument);

    const DISPPARAMS& given_;
    alignas(Variant) std::byte memory_[usual * entry];
    std::pmr::monotonic_buffer_resource resource_{memory_, sizeof memory_};
    std::pmr::vector<Variant> values_{&resource_};
    std::pmr::vector<VARIANT*> sources_{&resource_};
    std::pmr::vector<NamedArgument> named_{&resource_};
    std::uint32_t byReference_ = 0;
    Arguments arguments_{.positional = {}, .named = {}, .byReference = &byReference_};
};

/// The status of a call that did not come to its member. What it is about goes to the thread's error
/// information, which is where callers look for it beside such a status.
HRESULT statusOf(const CallError& error, const IncomingArguments& arguments, EXCEPINFO* failure,
                 UINT* argument) noexcept {
    if (argument && error.argument())
        *argument = arguments.indexOf(*error.argument());
    const HRESULT status = toCallStatus(error.number());
    if (status == DISP_E_EXCEPTION)
        return describeFailure(failure);
    reportFailure(IID_IDispatch);
    return status;
}

/// What a call asks for. Some script engines call whatever has parentheses as a method.
InvokeKind kindOf(WORD flags) noexcept {
    return flags == DISPATCH_METHOD ? InvokeKind::MethodOrGet : InvokeKind(flags & 15);
}

bool isWellFormed(const DISPPARAMS* given) noexcept {
    return given && (given->cArgs == 0 || given->rgvarg) &&
           (given->cNamedArgs == 0 || given->rgdispidNamedArgs) && given->cNamedArgs <= given->cArgs;
}

} // namespace

HRESULT numbersOf(const Object& object, OLECHAR** names, UINT count, DISPID* ids) noexcept {
    if (!names || !ids)
        return E_POINTER;
    if (count == 0)
        return E_INVALIDARG;
    try {
        const ClassInfo* info = object.classInfo();
        ids[0] = object.idOf(narrow(names[0]));
        bool found = ids[0] != unknownMember;
        for (UINT i = 1; i < count; ++i) {
            const auto place = info ? info->parameterOf(ids[0], narrow(names[i])) : std::nullopt;
            ids[i] = place.value_or(DISPID_UNKNOWN);
            found = found && place;
        }
        return found ? S_OK : DISP_E_UNKNOWNNAME;
    } catch (...) {
        return reportFailure(IID_IDispatch);
    }
}

HRESULT invokeMember(const Face& self, DISPID member, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                     EXCEPINFO* failure, UINT* argument) noexcept {
    if (!isWellFormed(parameters))
        return E_INVALIDARG;
    if (result)
        VariantInit(result);
    IncomingArguments arguments(*parameters);
    try {
        const InvokeKind kind = kindOf(flags);
        arguments.read(kind);
        const Variant value =
            callAndWriteBack([&] { return self.object->invoke(member, kind, arguments.get()); },
                             [&] { arguments.writeBack(); });
        if (result)
            toVariant(value, *result);
        return S_OK;
    } catch (const CallError& error) {
        return error.isAbout(arguments.get()) ? statusOf(error, arguments, failure, argument)
                                              : describeFailure(failure);
    } catch (...) {
        return describeFailure(failure);
    }
}

} // namespace vlgs::com
