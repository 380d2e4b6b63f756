#include "com/References.h"

#include "base/Error.h"
#include "com/EnumVariant.h"
#include "com/Face.h"
#include "com/Foreign.h"

namespace vlgs::com {

VARTYPE toInterface(Object* object, IUnknown*& to) {
    to = nullptr;
    if (!object)
        return VT_DISPATCH;
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
