// SPDX-License-Identifier: MIT
#include "com/EnumVariant.h"

#include "automation/Variant.h"
#include "com/Failure.h"
#include "com/Foreign.h"
#include "com/Values.h"

namespace vlgs::com {

IUnknown* EnumVariant::wrap(Enumerator* enumerator) {
    if (const auto* foreign = dynamic_cast<const ForeignEnumerator*>(enumerator)) {
        foreign->get()->AddRef();
        return foreign->get();
    }
    return new EnumVariant(Ref<Enumerator>(enumerator));
}

HRESULT EnumVariant::QueryInterface(REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    if (iid != IID_IUnknown && iid != IID_IEnumVARIANT) {
        *result = nullptr;
        return E_NOINTERFACE;
    }
    *result = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
}

ULONG EnumVariant::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT EnumVariant::Next(ULONG count, VARIANT* items, ULONG* fetched) noexcept {
    if (!items || (!fetched && count != 1))
        return E_POINTER;
    ULONG done = 0;
    try {
        for (Variant item; done < count && enumerator_->next(item); ++done)
            toVariant(item, items[done]);
    } catch (...) {
        while (done > 0)
            VariantClear(&items[--done]);
        if (fetched)
            *fetched = 0;
        return reportFailure(IID_IEnumVARIANT);
    }
    for (ULONG i = done; i < count; ++i)
        VariantInit(&items[i]);
    if (fetched)
        *fetched = done;
    return done == count ? S_OK : S_FALSE;
}

HRESULT EnumVariant::Skip(ULONG count) noexcept {
    try {
        for (Variant item; count > 0; --count)
            if (!enumerator_->next(item))
                return S_FALSE;
        return S_OK;
    } catch (...) {
        return reportFailure(IID_IEnumVARIANT);
    }
}

HRESULT EnumVariant::Reset() noexcept {
    try {
        enumerator_->reset();
        return S_OK;
    } catch (...) {
        return reportFailure(IID_IEnumVARIANT);
    }
}

HRESULT EnumVariant::Clone(IEnumVARIANT** copy) noexcept {
    if (!copy)
        return E_POINTER;
    *copy = nullptr;
    try {
        *copy = new EnumVariant(enumerator_->clone());
        return S_OK;
    } catch (...) {
        return reportFailure(IID_IEnumVARIANT);
    }
}

} // namespace vlgs::com
