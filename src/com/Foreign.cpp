// SPDX-License-Identifier: MIT
#include "com/Foreign.h"

#include "base/Error.h"
#include "com/Failure.h"
#include "com/References.h"
#include "com/ThreadState.h"
#include "com/Values.h"

#include <vector>

namespace vlgs::com {

namespace {

/// Arguments of an outgoing call, in the order in which automation wants them: last first.
class OutgoingArguments {
  public:
    OutgoingArguments(IDispatch* target, DISPID member, InvokeKind kind, const Arguments& arguments)
        : values_(arguments.positional.size() + arguments.named.size()) {
        if (!arguments.named.empty())
            resolveNames(target, member, arguments.named);
        for (std::size_t i = 0; i < arguments.named.size(); ++i)
            toVariant(*arguments.named[i].value, values_[i]);
        for (std::size_t i = 0; i < arguments.positional.size(); ++i)
            toVariant(arguments.positional[i], values_[values_.size() - 1 - i]);
        // The value of a property write is a named argument to automation.
        if (writes(kind) && !values_.empty())
            ids_.insert(ids_.begin(), DISPID_PROPERTYPUT);
        parameters_ = {values_.data(), ids_.empty() ? nullptr : ids_.data(),
                       static_cast<UINT>(values_.size()), static_cast<UINT>(ids_.size())};
    }
    OutgoingArguments(const OutgoingArguments&) = delete;
    OutgoingArguments& operator=(const OutgoingArguments&) = delete;
    ~OutgoingArguments() {
        for (auto& value : values_)
            VariantClear(&value);
    }
    DISPPARAMS* get() noexcept { return &parameters_; }

  private:
    /// The target tells the numbers of its parameters together with the name of the member.
    void resolveNames(IDispatch* target, DISPID member, std::span<const NamedArgument> arguments) {
        ComPtr<ITypeInfo> info;
        BSTR memberName = nullptr;
        UINT count = 0;
        if (FAILED(target->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put())) || !info ||
            FAILED(info->GetNames(member, &memberName, 1, &count)) || count == 0)
            raise(RunTimeError::NamedArgumentNotFound);
        std::vector<String> texts{toString(memberName)};
        SysFreeString(memberName);
        for (const auto& argument : arguments)
            texts.emplace_back(argument.name);
        std::vector<LPOLESTR> names;
        for (const auto& text : texts)
            names.push_back(const_cast<LPOLESTR>(wide(text.data())));
        std::vector<DISPID> ids(names.size());
        if (FAILED(target->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()),
                                         LOCALE_USER_DEFAULT, ids.data())))
            raise(RunTimeError::NamedArgumentNotFound);
        ids_.assign(ids.begin() + 1, ids.end());
    }

    std::vector<VARIANT> values_;
    std::vector<DISPID> ids_;
    DISPPARAMS parameters_{};
};

/// The enumerator in the result of a call of the enumeration member.
Variant enumeratorOf(const VARIANT& result) {
    if (result.vt == VT_UNKNOWN || result.vt == VT_DISPATCH)
        if (auto enumerator = queryFor<IEnumVARIANT>(result.punkVal))
            return make<ForeignEnumerator>(std::move(enumerator));
    return fromVariant(result);
}

} // namespace

Ref<ForeignObject> ForeignObject::of(IUnknown* pointer) {
    auto identity = queryFor<IUnknown>(pointer);
    if (!identity)
        raise(RunTimeError::TypeMismatch);
    auto& known = ThreadState::make().incoming;
    if (const auto found = known.find(identity.get()); found != known.end()) {
        found->second->passed_ = pointer;
        return Ref<ForeignObject>(found->second);
    }
    auto dispatch = queryFor<IDispatch>(pointer);
    return make<ForeignObject>(identity, dispatch, pointer);
}

ForeignObject::ForeignObject(ComPtr<IUnknown> identity, ComPtr<IDispatch> dispatch, const void* passed)
    : identity_(std::move(identity)), dispatch_(std::move(dispatch)), passed_(passed) {
    ThreadState::make().incoming.emplace(identity_.get(), this);
}

ForeignObject::~ForeignObject() {
    if (ThreadState* state = ThreadState::find())
        state->incoming.erase(identity_.get());
    ThreadState::dropUnused();
}

const OutsideObject::Access& ForeignObject::access() const noexcept {
    static constexpr auto pointerAt = [](const void* address) {
        return static_cast<IUnknown*>(const_cast<void*>(address));
    };
    static constexpr Access access{
        [](const void* address) { return fromInterface(pointerAt(address)); },
        [](const void* address) {
            pointerAt(address)->AddRef();
            return static_cast<std::int32_t>(pointerAt(address)->Release());
        },
    };
    return access;
}

DispatchId ForeignObject::idOf(std::u16string_view name) const {
    if (!dispatch_)
        return unknownMember;
    const String text(name);
    auto* raw = const_cast<LPOLESTR>(wide(text.data()));
    DISPID result = DISPID_UNKNOWN;
    if (FAILED(dispatch_->GetIDsOfNames(IID_NULL, &raw, 1, LOCALE_USER_DEFAULT, &result)))
        return unknownMember;
    return result;
}

Variant ForeignObject::invoke(DispatchId member, InvokeKind kind, const Arguments& arguments) {
    if (!dispatch_)
        raise(RunTimeError::NoSuchMember);
    OutgoingArguments outgoing(dispatch_.get(), member, kind, arguments);
    OleVariant result;
    EXCEPINFO failure{};
    UINT argument = 0;
    const bool write = writes(kind);
    const HRESULT status =
        dispatch_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(kind), outgoing.get(),
                          write ? nullptr : result.put(), &failure, &argument);
    if (FAILED(status))
        raiseForeign(status, failure);
    return member == enumerationMember ? enumeratorOf(result.get()) : fromVariant(result.get());
}

bool ForeignEnumerator::next(Variant& item) {
    OleVariant value;
    ULONG fetched = 0;
    const HRESULT status = enumerator_->Next(1, value.put(), &fetched);
    if (FAILED(status))
        raiseStatus(status);
    if (status != S_OK)
        return false;
    item = fromVariant(value.get());
    return true;
}

void ForeignEnumerator::reset() {
    const HRESULT status = enumerator_->Reset();
    if (FAILED(status))
        raiseStatus(status);
}

Ref<Enumerator> ForeignEnumerator::clone() const {
    ComPtr<IEnumVARIANT> copy;
    const HRESULT status = enumerator_->Clone(copy.put());
    if (FAILED(status))
        raiseStatus(status);
    return make<ForeignEnumerator>(std::move(copy));
}

} // namespace vlgs::com
