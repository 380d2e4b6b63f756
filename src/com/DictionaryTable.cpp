// SPDX-License-Identifier: MIT
#include "com/DictionaryTable.h"

#include "automation/Convert.h"
#include "automation/Dictionary.h"
#include "base/CaseFold.h"
#include "com/Failure.h"
#include "com/References.h"
#include "com/Values.h"

#include <functional>

namespace vlgs::com {

namespace {

Dictionary& dictionaryOf(Face* self) {
    return static_cast<Dictionary&>(*self->object);
}

/// The status of an action for which none of the pointers may be null.
template <class... Pointers>
HRESULT answer(const auto& action, const Pointers*... needed) noexcept {
    if ((... || !needed))
        return E_POINTER;
    try {
        action();
        return S_OK;
    } catch (...) {
        return reportFailure(dictionaryInterface);
    }
}

HRESULT STDMETHODCALLTYPE putItem(Face* self, const VARIANT* key, const VARIANT* item) noexcept {
    return answer([&] { dictionaryOf(self).PutItem(fromVariant(*key), fromVariant(*item)); }, key, item);
}

HRESULT STDMETHODCALLTYPE getItem(Face* self, const VARIANT* key, VARIANT* result) noexcept {
    return answer([&] { toVariant(dictionaryOf(self).Item(fromVariant(*key)), *result); }, key, result);
}

HRESULT STDMETHODCALLTYPE add(Face* self, const VARIANT* key, const VARIANT* item) noexcept {
    return answer([&] { dictionaryOf(self).Add(fromVariant(*key), fromVariant(*item)); }, key, item);
}

HRESULT STDMETHODCALLTYPE getCount(Face* self, LONG* result) noexcept {
    return answer([&] { *result = dictionaryOf(self).Count(); }, result);
}

HRESULT STDMETHODCALLTYPE exists(Face* self, const VARIANT* key, VARIANT_BOOL* result) noexcept {
    return answer(
        [&] { *result = dictionaryOf(self).Exists(fromVariant(*key)) ? VARIANT_TRUE : VARIANT_FALSE; }, key,
        result);
}

HRESULT STDMETHODCALLTYPE items(Face* self, VARIANT* result) noexcept {
    return answer([&] { toVariant(Variant(dictionaryOf(self).Items()), *result); }, result);
}

HRESULT STDMETHODCALLTYPE putKey(Face* self, const VARIANT* key, const VARIANT* other) noexcept {
    return answer([&] { dictionaryOf(self).PutKey(fromVariant(*key), fromVariant(*other)); }, key, other);
}

HRESULT STDMETHODCALLTYPE keys(Face* self, VARIANT* result) noexcept {
    return answer([&] { toVariant(Variant(dictionaryOf(self).Keys()), *result); }, result);
}

HRESULT STDMETHODCALLTYPE remove(Face* self, const VARIANT* key) noexcept {
    return answer([&] { dictionaryOf(self).Remove(fromVariant(*key)); }, key);
}

HRESULT STDMETHODCALLTYPE removeAll(Face* self) noexcept {
    return answer([&] { dictionaryOf(self).RemoveAll(); });
}

HRESULT STDMETHODCALLTYPE putCompareMode(Face* self, LONG mode) noexcept {
    return answer([&] { dictionaryOf(self).PutCompareMode(mode); });
}

HRESULT STDMETHODCALLTYPE getCompareMode(Face* self, LONG* result) noexcept {
    return answer([&] { *result = dictionaryOf(self).CompareMode(); }, result);
}

HRESULT STDMETHODCALLTYPE newEnum(Face* self, IUnknown** result) noexcept {
    return answer([&] { *result = toUnknown(dictionaryOf(self).NewEnum().get()); }, result);
}

/// A number below 1201, the same for keys that are the same in either compare mode.
HRESULT STDMETHODCALLTYPE getHash(Face* self, const VARIANT* key, VARIANT* result) noexcept {
    return answer(
        [&] {
            const Variant value = fromVariant(*key);
            const auto hash =
                value.isObject()
                    ? std::hash<const void*>()(value.object())
                    : std::hash<std::u16string_view>()(value.isString() ? toLower(value.text()).view()
                                                                        : toText(toDouble(value)).view());
            toVariant(static_cast<std::int32_t>(hash % 1201), *result);
        },
        self, key, result);
}

template <class Function>
const void* entry(Function* function) {
    return reinterpret_cast<const void*>(function);
}

} // namespace

// An item is put by reference or by value.
const void* const dictionaryTable[dispatchEntries + 15] = {
    dispatchTable[0], dispatchTable[1], dispatchTable[2],  dispatchTable[3],       dispatchTable[4],
    dispatchTable[5], dispatchTable[6], entry(&putItem),   entry(&putItem),        entry(&getItem),
    entry(&add),      entry(&getCount), entry(&exists),    entry(&items),          entry(&putKey),
    entry(&keys),     entry(&remove),   entry(&removeAll), entry(&putCompareMode), entry(&getCompareMode),
    entry(&newEnum),  entry(&getHash),
};

} // namespace vlgs::com
