// SPDX-License-Identifier: MIT
// A library object as COM sees it: one dual interface of its class, and what every object offers besides.
#pragma once

#include "com/Events.h"
#include "com/Module.h"
#include "com/Ole.h"

#include "automation/ClassInfo.h"
#include "automation/Object.h"

#include <optional>

namespace vlgs::com {

class DualObject;

/// What an interface pointer of a library object points at. The entries of the table take it as `this`.
struct Face {
    const void* const* vtable;
    Object* object;
    DualObject* owner;
};

/// The seven entries that begin every table: those of IUnknown and IDispatch.
inline constexpr std::size_t dispatchEntries = 7;
extern const void* const dispatchTable[dispatchEntries];

/// A class and its table. `info` is null for the interface of objects without a description.
struct ClassFace {
    const ClassInfo* info;
    ::GUID iid;
    const void* const* vtable;
};
/// The interface of the class that a description is of; a plain dispatch interface for one that no list has.
const ClassFace& faceOf(const ClassInfo* info) noexcept;

/// The counted part: holds the object and answers for all of its interfaces.
class DualObject final : public ISupportErrorInfo, public IProvideClassInfo2 {
  public:
    /// The counted interface pointer of an object; the same one for as long as somebody holds it.
    static IDispatch* wrap(Object* object);
    /// The object behind a pointer that `wrap` gave, null for any other pointer.
    static Object* unwrap(IUnknown* pointer) noexcept;

    /// What callers have for an object: its address, null for one that none of them holds, and the references
    /// to it, theirs and those of other objects of the library.
    static const void* addressOf(const Object& object) noexcept;
    static std::int32_t countOf(const Object& object) noexcept;

    const ClassFace& classFace() const noexcept { return class_; }
    /// Whether the type library describes the object's class.
    bool hasTypeInfo() const noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, ::GUID* id) noexcept override;

  private:
    IConnectionPointContainer* events() noexcept;

    explicit DualObject(Object* object);
    ~DualObject();

    Face face_;
    Ref<Object> object_;
    const ClassFace& class_;
    std::optional<EventPort> events_; // made when somebody asks
    ULONG references_ = 1;
    ModuleLock lock_;
};

/// A late-bound call of a described object's member.
HRESULT invokeMember(const Face& self, DISPID member, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                     EXCEPINFO* failure, UINT* argument) noexcept;
/// The numbers of a member's name and of its parameters' names.
HRESULT numbersOf(const Object& object, OLECHAR** names, UINT count, DISPID* ids) noexcept;

} // namespace vlgs::com
