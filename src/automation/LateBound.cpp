// SPDX-License-Identifier: MIT
#include "automation/LateBound.h"

#include "automation/ClassInfo.h"
#include "base/Error.h"

namespace vlgs {

Variant callMember(const Ref<Object>& object, std::u16string_view name, InvokeKind kind,
                   const Arguments& arguments) {
    if (!object)
        raise(RunTimeError::ObjectVariableNotSet);
    if (const ClassInfo* info = object->classInfo())
        return info->invoke(*object, name, kind, arguments);
    const DispatchId member = object->idOf(name);
    if (member == unknownMember)
        raise(RunTimeError::NoSuchMember);
    return object->invoke(member, kind, arguments);
}

Ref<Enumerator> enumerate(const Ref<Object>& object) {
    if (!object)
        raise(RunTimeError::ObjectVariableNotSet);
    try {
        const Variant result = object->invoke(enumerationMember, InvokeKind::MethodOrGet, {});
        if (result.isObject())
            if (auto* enumerator = dynamic_cast<Enumerator*>(result.object()))
                return Ref<Enumerator>(enumerator);
    } catch (const Error& error) {
        if (!error.is(RunTimeError::NoSuchMember))
            throw;
    }
    raise(RunTimeError::NotACollection);
}

} // namespace vlgs
