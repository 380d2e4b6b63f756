// SPDX-License-Identifier: MIT
#include "viewprops/ViewProperties.h"

#include "frame/Errors.h"
#include "viewprops/PropertyString.h"

namespace vlgs {

const ClassInfo& ViewProperties::description() {
    return classInfoOf<ViewProperties>();
}

void ViewProperties::Clear() noexcept {
    if (const auto dictionary = std::exchange(dictionary_, nullptr))
        dictionary->RemoveAll();
}

String ViewProperties::PropertyString() const {
    return g_BuildPropertyString(dictionary_);
}

void ViewProperties::SetPropertyString(const String& sValue) {
    auto dictionary =
        underMessage(u"VlGeneralServices.ViewProperties.PropertyString (Let)",
                     eMsg_ErrorSettingPropertyStringX, [&] { return g_BuildPropertyObject(sValue); });
    Clear();
    dictionary_ = std::move(dictionary);
}

} // namespace vlgs
