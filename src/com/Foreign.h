// SPDX-License-Identifier: MIT
// Somebody else's automation object, as the library uses it.
#pragma once

#include "com/Module.h"
#include "com/Ole.h"

#include "automation/OutsideObject.h"
#include "automation/Variant.h"

namespace vlgs::com {

/// Stands for a caller's object. Calls go through its dispatch interface, arguments by value; a failure is
/// raised with the number, source and description that the object tells.
class ForeignObject final : public OutsideObject {
  public:
    /// The one that stands for an object; `pointer` is any of its interfaces, and comes back as it is.
    static Ref<ForeignObject> of(IUnknown* pointer);

    DispatchId idOf(std::u16string_view name) const override;
    Variant invoke(DispatchId member, InvokeKind kind, const Arguments& arguments) override;

    const Access& access() const noexcept override;
    bool takesCalls() const noexcept override { return static_cast<bool>(dispatch_); }
    const void* address() const noexcept override { return passed_; }

    /// Not counted; null when the object has no dispatch interface.
    IDispatch* dispatch() const noexcept { return dispatch_.get(); }
    IUnknown* unknown() const noexcept { return identity_.get(); }

  private:
    friend Ref<ForeignObject> make<ForeignObject>(ComPtr<IUnknown>&, ComPtr<IDispatch>&, IUnknown*&);
    ForeignObject(ComPtr<IUnknown> identity, ComPtr<IDispatch> dispatch, const void* passed);
    ~ForeignObject() override;

    ComPtr<IUnknown> identity_;
    ComPtr<IDispatch> dispatch_;
    const void* passed_; // the pointer that the caller last passed for it
    ModuleLock lock_;
};

/// A caller's enumerator.
class ForeignEnumerator final : public Enumerator {
  public:
    explicit ForeignEnumerator(ComPtr<IEnumVARIANT> enumerator) : enumerator_(std::move(enumerator)) {}
    bool next(Variant& item) override;
    void reset() override;
    Ref<Enumerator> clone() const override;
    IEnumVARIANT* get() const noexcept { return enumerator_.get(); }

  private:
    ComPtr<IEnumVARIANT> enumerator_;
    ModuleLock lock_;
};

} // namespace vlgs::com
