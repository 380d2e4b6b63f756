// SPDX-License-Identifier: MIT
// The outgoing interface of an object: a connection point that tells a caller's sink of every event.
#pragma once

#include "com/Ole.h"

#include "automation/ClassInfo.h"
#include "automation/EventSource.h"

#include <map>

namespace vlgs::com {

/// The connection point of an object that raises events, and the container of this one point. It shares the
/// reference count of the object that it belongs to.
class EventPort final : public IConnectionPointContainer, public IConnectionPoint {
  public:
    EventPort(IUnknown* owner, EventSource& source, const ClassInfo& info)
        : owner_(owner), source_(source), info_(info) {}
    EventPort(const EventPort&) = delete;
    EventPort& operator=(const EventPort&) = delete;
    ~EventPort();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return owner_->AddRef(); }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return owner_->Release(); }

    /// There is one point, which `FindConnectionPoint` finds.
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) noexcept override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) noexcept override;

  private:
    IID eventId() const noexcept;

    IUnknown* owner_;
    EventSource& source_;
    const ClassInfo& info_;
    std::map<DWORD, std::int32_t> connections_; // the source's number by our cookie
};

} // namespace vlgs::com
