// SPDX-License-Identifier: MIT
#include "com/References.h"

#include "automation/Dictionary.h"
#include "base/Error.h"
#include "com/EnumVariant.h"
#include "com/Face.h"
#include "com/Foreign.h"

#include <objbase.h>

namespace vlgs::com {

namespace {

constexpr ::GUID platformsDictionary{
    0xEE09B103, 0x97E0, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};

/// A dictionary becomes the platform's when a caller gets it, so that it has all that callers know of that
/// one; it stays the library's where the platform has none.
Object* asPlatforms(Dictionary& dictionary) {
    if (!dictionary.holder()) {
        ComPtr<IUnknown> made;
        if (FAILED(CoCreateInstance(platformsDictionary, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                    reinterpret_cast<void**>(made.put()))))
            return &dictionary;
        dictionary.moveInto(fromInterface(made.get()));
    }
    return dictionary.holder().get();
}

} // namespace

VARTYPE toInterface(Object* object, IUnknown*& to) {
    to = nullptr;
    if (!object)
        return VT_DISPATCH;
    if (object->classInfo() == &Dictionary::description())
        object = asPlatforms(static_cast<Dictionary&>(*object));
    if (!object->classInfo()) {
        if (const auto* foreign = dynamic_cast<const ForeignObject*>(object)) {
            to = foreign->dispatch() ? foreign->dispatch() : foreign->unknown();
            to->AddRef();
            return foreign->dispatch() ? VT_DISPATCH : VT_UNKNOWN;
        }
        if (auto* enumerator = dynamic_cast<Enumerator*>(object)) {
            to = EnumVariant::wrap(enumerator);
            return VT_UNKNOWN;
        }
    }
    to = DualObject::wrap(object);
    return VT_DISPATCH;
}

IDispatch* toDispatch(Object* object) {
    IUnknown* result = nullptr;
    if (toInterface(object, result) == VT_DISPATCH)
        return static_cast<IDispatch*>(result);
    result->Release();
    raise(RunTimeError::TypeMismatch);
}

IUnknown* toUnknown(Object* object) {
    IUnknown* result = nullptr;
    toInterface(object, result);
    return result;
}

Ref<Object> fromInterface(IUnknown* pointer) {
    if (!pointer)
        return nullptr;
    if (Object* own = DualObject::unwrap(pointer))
        return Ref<Object>(own);
    // Another interface of an own object leads back to it.
    const ComPtr<IUnknown> identity = queryFor<IUnknown>(pointer);
    if (Object* own = identity ? DualObject::unwrap(identity.get()) : nullptr)
        return Ref<Object>(own);
    return ForeignObject::of(pointer);
}

} // namespace vlgs::com
