// SPDX-License-Identifier: MIT
// An enumerator of the library as a caller's `For Each` sees it.
#pragma once

#include "com/Module.h"
#include "com/Ole.h"

#include "automation/Object.h"

namespace vlgs::com {

class EnumVariant final : public IEnumVARIANT {
  public:
    /// A counted interface of an enumerator; a caller's own comes back as it was.
    static IUnknown* wrap(Enumerator* enumerator);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) noexcept override;

  private:
    explicit EnumVariant(Ref<Enumerator> enumerator) : enumerator_(std::move(enumerator)) {}
    ~EnumVariant() = default;

    Ref<Enumerator> enumerator_;
    ULONG references_ = 1;
    ModuleLock lock_;
};

} // namespace vlgs::com
