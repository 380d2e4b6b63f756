#include "com/Face.h"

#include "automation/ClassDescription.h"
#include "base/Error.h"
#include "com/Failure.h"
#include "com/References.h"
#include "com/Values.h"

#include <algorithm>
#include <array>
#include <string>

namespace vlgs::com {

namespace {

constexpr std::size_t maximum = ClassInfo::maximumParameters;
constexpr UINT noParameter = static_cast<UINT>(-1);

/// The arguments of one call: each parameter's slot, and the caller's VARIANT that it came from.
class IncomingArguments {
  public:
    explicit IncomingArguments(const DISPPARAMS& given) : given_(given) {}
    IncomingArguments(const IncomingArguments&) = delete;
    IncomingArguments& operator=(const IncomingArguments&) = delete;
    ~IncomingArguments() {
        for (std::size_t i = 0; i < made_; ++i)
            std::destroy_at(value(i));
    }

    /// Finds each parameter's argument. Positional ones come last first in `given`, after the named ones; the
    /// value of a property write is named DISPID_PROPERTYPUT and is the last parameter.
    HRESULT place(const MemberInfo& member, UINT* argument) {
        const std::size_t count = member.parameters.size();
        if (given_.cArgs > count || given_.cNamedArgs > given_.cArgs)
            return DISP_E_BADPARAMCOUNT;
        const bool write = covers(InvokeKind(12), InvokeKind(member.kind));
        const UINT positional = given_.cArgs - given_.cNamedArgs;
        const bool valueIsNamed = given_.cNamedArgs > 0 && given_.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        for (UINT i = 0; i < positional; ++i) {
            const bool last = write && !valueIsNamed && i + 1 == positional;
            source_[last ? count - 1 : i] = &given_.rgvarg[given_.cArgs - 1 - i];
        }
        for (UINT i = 0; i < given_.cNamedArgs; ++i) {
            const DISPID id = given_.rgdispidNamedArgs[i];
            const std::size_t to =
                id == DISPID_PROPERTYPUT && write ? count - 1 : static_cast<std::size_t>(id);
            if (to >= count || source_[to]) {
                setArgument(argument, i);
                return DISP_E_PARAMNOTFOUND;
            }
            source_[to] = &given_.rgvarg[i];
        }
        return S_OK;
    }

    /// Reads the arguments into their slots.
    HRESULT read(const MemberInfo& member, UINT* argument) {
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
            if (source_[i] && !isMissing(*source_[i])) {
                setArgument(argument, indexOf(i));
                new (value(i)) Variant(fromVariant(*source_[i]));
                slots_[i] = value(i);
            } else if (member.parameters[i].optional) {
                new (value(i)) Variant;
            } else {
                setArgument(argument, source_[i] ? indexOf(i) : 0);
                return DISP_E_PARAMNOTOPTIONAL;
            }
            made_ = i + 1;
        }
        return S_OK;
    }

    /// Hands changed by-reference arguments back to the caller's variables.
    void writeBack(const MemberInfo& member) {
        for (std::size_t i = 0; i < member.parameters.size(); ++i)
            if (slots_[i] && member.parameters[i].type.byReference && (source_[i]->vt & VT_BYREF))
                assign(*source_[i], *slots_[i]);
    }

    /// Whether the failure in flight was an argument that does not fit its parameter: the first such
    /// argument's place in the caller's array, or `noParameter`.
    UINT misfit(const MemberInfo& member) const noexcept {
        for (std::size_t i = 0; i < member.parameters.size(); ++i)
            if (slots_[i] && !fits(*slots_[i], member.parameters[i].type))
                return indexOf(i);
        return noParameter;
    }

    Variant* const* slots() const noexcept { return slots_.data(); }
    static void setArgument(UINT* argument, UINT value) noexcept {
        if (argument)
            *argument = value;
    }

  private:
    Variant* value(std::size_t i) { return reinterpret_cast<Variant*>(memory_) + i; }
    UINT indexOf(std::size_t i) const noexcept { return static_cast<UINT>(source_[i] - given_.rgvarg); }
    static bool isMissing(const VARIANT& argument) {
        if (argument.vt == (VT_BYREF | VT_VARIANT))
            return isMissing(*argument.pvarVal);
        return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
    }
    static bool fits(const Variant& given, const TypeInfo& type) noexcept {
        try {
            if (type.type == VarType::Variant || (type.type == VarType::Empty))
                return true;
            if (code(type.type) & code(VarType::Array))
                return given.isArray();
            if (type.type == VarType::Object) {
                const Ref<Object> object = toObject(given);
                return !object || !type.classInfo || object->classInfo() == &type.classInfo();
            }
            if (type.type == VarType::Record)
                return given.is(VarType::Record);
            changeType(given, type.type);
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    const DISPPARAMS& given_;
    std::array<VARIANT*, maximum> source_{};
    std::array<Variant*, maximum> slots_{};
    alignas(Variant) std::byte memory_[maximum * sizeof(Variant)];
    std::size_t made_ = 0;
};

/// `document.Sections("A")`: arguments of a property that takes none go to its value's default member.
bool isForValue(const MemberInfo& member, const DISPPARAMS& given) {
    return member.parameters.empty() && member.kind == MemberKind::PropertyGet &&
           member.result.type == VarType::Object && given.cArgs > 0;
}

HRESULT invokeValue(const Face& self, const MemberInfo& member, WORD flags, DISPPARAMS* parameters,
                    VARIANT* result, EXCEPINFO* failure, UINT* argument) noexcept {
    try {
        const Variant value = member.invoke(*self.object, nullptr);
        if (!value.object())
            raise(RunTimeError::ObjectVariableNotSet);
        const auto target = ComPtr<IDispatch>::attach(toDispatch(value.object()));
        return target->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, parameters, result, failure,
                              argument);
    } catch (...) {
        return describeFailure(failure);
    }
}

/// Calls of an object without a description, whose class answers itself.
HRESULT invokeUndescribed(const Face& self, DISPID member, WORD flags, const DISPPARAMS& given,
                          VARIANT* result, EXCEPINFO* failure) noexcept {
    try {
        std::vector<Variant> positional;
        for (UINT i = given.cArgs; i-- > 0;)
            positional.push_back(fromVariant(given.rgvarg[i]));
        const Variant value =
            self.object->invoke(member, InvokeKind(static_cast<std::uint8_t>(flags & 15)), {positional, {}});
        if (result)
            toVariant(value, *result);
        return S_OK;
    } catch (...) {
        return describeFailure(failure);
    }
}

HRESULT statusOf(const IncomingArguments& arguments, const MemberInfo& member, EXCEPINFO* failure,
                 UINT* argument) noexcept {
    const HRESULT status = describeFailure(failure);
    const UINT misfit = arguments.misfit(member);
    if (misfit == noParameter)
        return status;
    IncomingArguments::setArgument(argument, misfit);
    const bool overflow =
        failure && failure->scode == toStatus(static_cast<std::int32_t>(RunTimeError::Overflow));
    if (failure) {
        SysFreeString(failure->bstrSource);
        SysFreeString(failure->bstrDescription);
        *failure = {};
    }
    return overflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
}

HRESULT invokeDescribed(const Face& self, const MemberInfo& member, IncomingArguments& arguments,
                        VARIANT* result, EXCEPINFO* failure, UINT* argument) noexcept {
    try {
        const HRESULT status = arguments.read(member, argument);
        if (FAILED(status))
            return status;
    } catch (const Error& error) {
        return error.is(RunTimeError::TypeMismatch) ? DISP_E_TYPEMISMATCH : describeFailure(failure);
    } catch (...) {
        return describeFailure(failure);
    }
    try {
        const Variant value = member.invoke(*self.object, arguments.slots());
        arguments.writeBack(member);
        if (result)
            toVariant(value, *result);
        return S_OK;
    } catch (...) {
        return statusOf(arguments, member, failure, argument);
    }
}

constexpr char16_t lowerAscii(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

bool equalNames(std::string_view a, std::u16string_view b) {
    return std::ranges::equal(
        a, b, [](char x, char16_t y) { return lowerAscii(static_cast<unsigned char>(x)) == lowerAscii(y); });
}

/// The number of a parameter's name in any of the rows of a member.
DISPID parameterNumber(const ClassInfo& info, DISPID member, std::u16string_view name) {
    for (const auto& row : info.members())
        if (row.id == member)
            for (std::size_t i = 0; i < row.parameters.size(); ++i)
                if (equalNames(row.parameters[i].name, name))
                    return static_cast<DISPID>(i);
    return DISPID_UNKNOWN;
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
            ids[i] = found && info ? parameterNumber(*info, ids[0], narrow(names[i])) : DISPID_UNKNOWN;
            found = found && ids[i] != DISPID_UNKNOWN;
        }
        return found ? S_OK : DISP_E_UNKNOWNNAME;
    } catch (...) {
        return reportFailure(IID_IDispatch);
    }
}

HRESULT invokeMember(const Face& self, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                     EXCEPINFO* failure, UINT* argument) noexcept {
    if (!parameters || (parameters->cArgs > 0 && !parameters->rgvarg) ||
        (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs))
        return E_INVALIDARG;
    if (result)
        VariantInit(result);
    const ClassInfo* info = self.object->classInfo();
    if (!info)
        return invokeUndescribed(self, id, flags, *parameters, result, failure);
    const MemberInfo* member = info->find(id, InvokeKind(static_cast<std::uint8_t>(flags & 15)));
    // Some script engines call whatever has parentheses as a method.
    if (!member && flags == DISPATCH_METHOD)
        member = info->find(id, InvokeKind::PropertyGet);
    if (!member)
        return DISP_E_MEMBERNOTFOUND;
    if (isForValue(*member, *parameters))
        return invokeValue(self, *member, flags, parameters, result, failure, argument);
    IncomingArguments arguments(*parameters);
    const HRESULT status = arguments.place(*member, argument);
    if (FAILED(status))
        return status;
    return invokeDescribed(self, *member, arguments, result, failure, argument);
}

} // namespace vlgs::com
