// SPDX-License-Identifier: MIT
#include "com/Face.h"

#include "automation/OutsideObject.h"
#include "com/Failure.h"
#include "com/References.h"
#include "com/ThreadState.h"
#include "com/TypeLibrary.h"

#include <memory>

namespace vlgs::com {

namespace {

HRESULT STDMETHODCALLTYPE queryInterface(Face* self, REFIID iid, void** result) noexcept {
    return self->owner->QueryInterface(iid, result);
}

ULONG STDMETHODCALLTYPE addRef(Face* self) noexcept {
    return self->owner->AddRef();
}

ULONG STDMETHODCALLTYPE release(Face* self) noexcept {
    return self->owner->Release();
}

HRESULT STDMETHODCALLTYPE getTypeInfoCount(Face* self, UINT* count) noexcept {
    if (!count)
        return E_POINTER;
    *count = self->owner->hasTypeInfo() ? 1 : 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE getTypeInfo(Face* self, UINT index, LCID, ITypeInfo** info) noexcept {
    if (!info)
        return E_POINTER;
    *info = nullptr;
    if (index != 0 || !self->owner->hasTypeInfo())
        return DISP_E_BADINDEX;
    try {
        *info = typeInfoOf(self->owner->classFace().info->header().interfaceId).detach();
        return S_OK;
    } catch (...) {
        return reportFailure(self->owner->classFace().iid);
    }
}

HRESULT STDMETHODCALLTYPE getIdsOfNames(Face* self, REFIID reserved, OLECHAR** names, UINT count, LCID,
                                        DISPID* ids) noexcept {
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    return numbersOf(*self->object, names, count, ids);
}

HRESULT STDMETHODCALLTYPE invoke(Face* self, DISPID member, REFIID reserved, LCID, WORD flags,
                                 DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* failure,
                                 UINT* argument) noexcept {
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    return invokeMember(*self, member, flags, parameters, result, failure, argument);
}

} // namespace

const void* const dispatchTable[dispatchEntries] = {
    reinterpret_cast<const void*>(&queryInterface), reinterpret_cast<const void*>(&addRef),
    reinterpret_cast<const void*>(&release),        reinterpret_cast<const void*>(&getTypeInfoCount),
    reinterpret_cast<const void*>(&getTypeInfo),    reinterpret_cast<const void*>(&getIdsOfNames),
    reinterpret_cast<const void*>(&invoke),
};

DualObject::DualObject(Object* object) : object_(object), class_(faceOf(object->classInfo())) {
    static constexpr CallersView view{&addressOf, &countOf};
    face_ = {class_.vtable, object, this};
    ThreadState::make().outgoing.emplace(object, this);
    callersView.store(&view, std::memory_order_relaxed);
}

DualObject::~DualObject() {
    // Other objects may go with this one and ask for the state, so this one leaves it first.
    if (ThreadState* state = ThreadState::find())
        state->outgoing.erase(object_.get());
    events_.reset();
    object_ = nullptr;
    ThreadState::dropUnused();
}

IDispatch* DualObject::wrap(Object* object) {
    if (ThreadState* state = ThreadState::find())
        if (const auto found = state->outgoing.find(object); found != state->outgoing.end()) {
            found->second->AddRef();
            return reinterpret_cast<IDispatch*>(&found->second->face_);
        }
    return reinterpret_cast<IDispatch*>(&(new DualObject(object))->face_);
}

const void* DualObject::addressOf(const Object& object) noexcept {
    const DualObject* known = ThreadState::outgoingOf(object);
    return known ? &known->face_ : nullptr;
}

std::int32_t DualObject::countOf(const Object& object) noexcept {
    const DualObject* known = ThreadState::outgoingOf(object);
    const auto callers = known ? static_cast<std::int32_t>(known->references_) - 1 : 0; // it holds one itself
    return object.referenceCount() + callers;
}

Object* DualObject::unwrap(IUnknown* pointer) noexcept {
    const auto* face = reinterpret_cast<const Face*>(pointer);
    return face->vtable[0] == dispatchTable[0] ? face->object : nullptr;
}

HRESULT DualObject::QueryInterface(REFIID iid, void** result) noexcept {
    if (!result)
        return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == class_.iid)
        *result = &face_;
    else if (iid == IID_ISupportErrorInfo)
        *result = static_cast<ISupportErrorInfo*>(this);
    else if (hasTypeInfo() && (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2))
        *result = static_cast<IProvideClassInfo2*>(this);
    else if (iid == IID_IConnectionPointContainer && events())
        *result = events();
    else {
        *result = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

IConnectionPointContainer* DualObject::events() noexcept {
    if (!events_)
        if (auto* source = dynamic_cast<EventSource*>(object_.get()))
            events_.emplace(static_cast<ISupportErrorInfo*>(this), *source, *object_->classInfo());
    return events_ ? &*events_ : nullptr;
}

bool DualObject::hasTypeInfo() const noexcept {
    return class_.info && class_.info->header().library == ClassHeader().library;
}

ULONG DualObject::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT DualObject::InterfaceSupportsErrorInfo(REFIID iid) noexcept {
    return iid == class_.iid || iid == IID_IDispatch ? S_OK : S_FALSE;
}

HRESULT DualObject::GetClassInfo(ITypeInfo** info) noexcept {
    if (!info)
        return E_POINTER;
    *info = nullptr;
    try {
        *info = typeInfoOf(class_.info->header().classId).detach();
        return S_OK;
    } catch (...) {
        return reportFailure(IID_IProvideClassInfo);
    }
}

HRESULT DualObject::GetGUID(DWORD kind, ::GUID* id) noexcept {
    if (!id)
        return E_POINTER;
    *id = {};
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || class_.info->header().eventInterface.empty())
        return E_INVALIDARG;
    *id = toGuid(class_.info->header().eventInterfaceId);
    return S_OK;
}

} // namespace vlgs::com
