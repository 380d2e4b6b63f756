// SPDX-License-Identifier: MIT
// How COM makes objects of the component's classes.
#pragma once

#include "com/Module.h"
#include "com/Ole.h"

#include "automation/ClassInfo.h"

namespace vlgs::com {

class ClassFactory final : public IClassFactory {
  public:
    /// The factory of a creatable class; CLASS_E_CLASSNOTAVAILABLE for any other identifier.
    static HRESULT find(REFCLSID classId, REFIID iid, void** result) noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    /// Fails as the class's initialisation fails, with its error information.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) noexcept override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

  private:
    explicit ClassFactory(const ClassInfo& info) : info_(info) {}
    ~ClassFactory() = default;

    const ClassInfo& info_;
    LONG references_ = 1; // factories may be used by several threads
    ModuleLock lock_;
};

} // namespace vlgs::com
