#include "platform/ComponentRegistration.h"

#include "automation/CaseFold.h"

namespace vlgs {

std::optional<GuidValue> registeredClassId(std::u16string_view progId) {
    for (const ClassInfo* own : ownClasses())
        if (equalIgnoringCase(own->programmaticId(), progId))
            return own->header().classId;
    return std::nullopt;
}

std::optional<String> registeredProgId(const GuidValue& classId) {
    for (const ClassInfo* own : ownClasses())
        if (own->header().classId == classId)
            return own->programmaticId();
    return std::nullopt;
}

} // namespace vlgs
