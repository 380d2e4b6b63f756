// SPDX-License-Identifier: MIT
#include "frame/ClassNames.h"

#include "base/CaseFold.h"
#include "platform/ComponentRegistration.h"

namespace vlgs {

std::optional<GuidValue> classIdOf(std::u16string_view progId) {
    if (const auto registered = registeredClassId(progId))
        return registered;
    for (const ClassInfo* own : ownClasses())
        if (equalIgnoringCase(own->programmaticId(), progId))
            return own->header().classId;
    return std::nullopt;
}

std::optional<String> progIdOf(const GuidValue& classId) {
    if (auto registered = registeredProgId(classId))
        return registered;
    for (const ClassInfo* own : ownClasses())
        if (own->header().classId == classId)
            return own->programmaticId();
    return std::nullopt;
}

} // namespace vlgs
