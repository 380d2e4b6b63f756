// SPDX-License-Identifier: MIT
#include "com/Events.h"

#include "base/Error.h"
#include "com/Failure.h"
#include "com/Values.h"

#include <algorithm>
#include <olectl.h>

namespace vlgs::com {

namespace {

/// A caller's sink. Arguments that an event passes by reference go as references of the type that the
/// outgoing interface declares, so that the sink can write to them.
class EventSink final : public Object {
  public:
    EventSink(ComPtr<IDispatch> target, const ClassInfo& info) : target_(std::move(target)), info_(info) {}

    Variant invoke(DispatchId event, InvokeKind, const Arguments& arguments) override {
        const auto& given = arguments.positional;
        std::vector<OleVariant> values(given.size());
        std::vector<VARIANT> passed(given.size());
        const auto parameters = parametersOf(event);
        for (std::size_t i = 0; i < given.size(); ++i) {
            VARIANT& value = values[i].get();
            toVariant(given[i], value);
            const bool byReference = i < parameters.size() && parameters[i].type.byReference;
            passed[given.size() - 1 - i] =
                byReference ? reference(value, parameters[i].type.type == VarType::Variant) : value;
        }
        DISPPARAMS all{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
        EXCEPINFO failure{};
        const HRESULT status = target_->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &all,
                                               nullptr, &failure, nullptr);
        if (FAILED(status))
            raiseForeign(status, failure);
        for (std::size_t i = 0; i < given.size() && i < parameters.size(); ++i)
            if (parameters[i].type.byReference)
                given[i] = fromVariant(values[i].get());
        return {};
    }

  private:
    static VARIANT reference(VARIANT& value, bool isVariant) {
        VARIANT result;
        result.vt = static_cast<VARTYPE>(VT_BYREF | (isVariant ? VARTYPE{VT_VARIANT} : value.vt));
        result.byref = isVariant ? static_cast<void*>(&value) : &value.llVal;
        return result;
    }
    std::span<const ParameterInfo> parametersOf(DispatchId event) const {
        const auto found = std::ranges::find(info_.events(), event, &MemberInfo::id);
        return found == info_.events().end() ? std::span<const ParameterInfo>() : found->parameters;
    }

    ComPtr<IDispatch> target_;
    const ClassInfo& info_;
};

} // namespace

EventPort::~EventPort() {
    for (const auto& [cookie, connection] : connections_)
        source_.disconnect(connection);
}

IID EventPort::eventId() const noexcept {
    return toGuid(info_.header().eventInterfaceId);
}

HRESULT EventPort::QueryInterface(REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    if (iid != IID_IConnectionPoint)
        return owner_->QueryInterface(iid, result);
    *result = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

HRESULT EventPort::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
    if (!points)
        return E_POINTER;
    *points = nullptr;
    return E_NOTIMPL;
}

HRESULT EventPort::FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept {
    if (!point)
        return E_POINTER;
    *point = nullptr;
    if (iid != eventId() && iid != IID_IDispatch)
        return CONNECT_E_NOCONNECTION;
    *point = this;
    AddRef();
    return S_OK;
}

HRESULT EventPort::GetConnectionInterface(IID* iid) noexcept {
    if (!iid)
        return E_POINTER;
    *iid = eventId();
    return S_OK;
}

HRESULT EventPort::GetConnectionPointContainer(IConnectionPointContainer** container) noexcept {
    if (!container)
        return E_POINTER;
    *container = this;
    AddRef();
    return S_OK;
}

HRESULT EventPort::Advise(IUnknown* sink, DWORD* cookie) noexcept {
    if (!sink || !cookie)
        return E_POINTER;
    *cookie = 0;
    ComPtr<IDispatch> target;
    if (FAILED(sink->QueryInterface(eventId(), reinterpret_cast<void**>(target.put()))) &&
        FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(target.put()))))
        return CONNECT_E_CANNOTCONNECT;
    try {
        const std::int32_t connection = source_.connect(make<EventSink>(std::move(target), info_));
        *cookie = static_cast<DWORD>(connection);
        connections_.emplace(*cookie, connection);
        return S_OK;
    } catch (...) {
        return reportFailure(IID_IConnectionPoint);
    }
}

HRESULT EventPort::Unadvise(DWORD cookie) noexcept {
    const auto found = connections_.find(cookie);
    if (found == connections_.end())
        return CONNECT_E_NOCONNECTION;
    source_.disconnect(found->second);
    connections_.erase(found);
    return S_OK;
}

HRESULT EventPort::EnumConnections(IEnumConnections** connections) noexcept {
    if (!connections)
        return E_POINTER;
    *connections = nullptr;
    return E_NOTIMPL;
}

} // namespace vlgs::com
