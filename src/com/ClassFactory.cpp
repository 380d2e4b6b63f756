// SPDX-License-Identifier: MIT
#include "com/ClassFactory.h"

#include "com/Face.h"
#include "com/Failure.h"
#include "library/Classes.h"

#include <new>

namespace vlgs::com {

HRESULT ClassFactory::find(REFCLSID classId, REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    *result = nullptr;
    for (const auto* info : classes()) {
        if (!info->header().creatable || toGuid(info->header().classId) != classId)
            continue;
        const auto factory = ComPtr<IClassFactory>::attach(new (std::nothrow) ClassFactory(*info));
        return factory ? factory->QueryInterface(iid, result) : E_OUTOFMEMORY;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT ClassFactory::QueryInterface(REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) {
        *result = nullptr;
        return E_NOINTERFACE;
    }
    *result = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG ClassFactory::Release() noexcept {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    try {
        const Ref<Object> object = info_.create();
        const auto face = ComPtr<IDispatch>::attach(DualObject::wrap(object.get()));
        return face->QueryInterface(iid, result);
    } catch (...) {
        return reportFailure(IID_IClassFactory);
    }
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
    if (lock)
        ModuleLock::add();
    else
        ModuleLock::remove();
    return S_OK;
}

} // namespace vlgs::com
