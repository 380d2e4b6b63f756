// SPDX-License-Identifier: MIT
#include "general/GUID.h"

#include "base/Error.h"
#include "frame/ClassNames.h"
#include "platform/Guid.h"

namespace vlgs {

namespace {

/// Offsets of the class's errors from the base of object-defined ones.
enum class Failure : std::int32_t {
    TextIsNoGuid = 4000,
    UnknownProgID = 4001,
    NoProgID = 4003,
    CannotCreate = 4004,
};

[[noreturn]] void fail(Failure failure, const char16_t* member, const char16_t* description) {
    throw Error(objectErrorBase + static_cast<std::int32_t>(failure),
                concat(u"VlGeneralServices.GUID.", std::u16string_view(member)), description);
}

GuidValue parse(const String& text, const char16_t* member, const char16_t* description) {
    const auto value = parseGuid(text);
    if (!value)
        fail(Failure::TextIsNoGuid, member, description);
    return *value;
}

} // namespace

const ClassInfo& GUID::description() {
    return classInfoOf<GUID>();
}

String GUID::GenerateGUID() {
    try {
        return guidText(createGuid());
    } catch (const Error&) {
        fail(Failure::CannotCreate, u"GenerateGUID", u"Error generating GUID");
    }
}

bool GUID::IsEqualGUID(const String& sGUID1, const String& sGUID2) const {
    const auto first = parse(sGUID1, u"IsEqualGUID", u"Error Converting sGUID1 from String");
    const auto second = parse(sGUID2, u"IsEqualGUID", u"Error Converting sGUID2 from String");
    return first == second;
}

String GUID::GUIDFromProgID(const String& sProgID) const {
    const auto id = classIdOf(sProgID);
    if (!id)
        fail(Failure::UnknownProgID, u"GUIDFromProgID", u"Error Converting ProgID to GUID");
    return guidText(*id);
}

String GUID::ProgIDFromGUID(const String& sGUID) const {
    const auto id = parse(sGUID, u"ProgIDFromGUID", u"Error Converting sGUID from String");
    const auto name = progIdOf(id);
    if (!name)
        fail(Failure::NoProgID, u"ProgIDFromGUID", u"Error Converting ProgID to CLSID");
    return *name;
}

} // namespace vlgs
