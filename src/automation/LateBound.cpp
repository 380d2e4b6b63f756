#include "automation/LateBound.h"

#include "automation/CallError.h"
#include "automation/ClassInfo.h"
#include "base/Error.h"

namespace vlgs {

Variant callMember(const Ref<Object>& object, std::u16string_view name, InvokeKind kind,
                   std::span<Variant> arguments) {
    if (!object)
        raise(RunTimeError::ObjectVariableNotSet);
    const ClassInfo* info = object->classInfo();
    const DispatchId member = info ? info->idOf(name) : object->idOf(name);
    if (member == unknownMember) {
        if (info)
            throw noSuchMember(*info, name);
        raise(RunTimeError::NoSuchMember);
    }
    return info ? info->invoke(*object, member, kind, {arguments})
                : object->invoke(member, kind, {arguments});
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
