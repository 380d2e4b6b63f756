// SPDX-License-Identifier: MIT
#include "ini/Property.h"

namespace vlgs {

const ClassInfo& Property::description() {
    return classInfoOf<Property>();
}

void Property::LetValue(Variant vValue) noexcept {
    if (!vValue.isObject())
        value_ = std::move(vValue);
}

void Property::SetValue(Variant vValue) noexcept {
    if (vValue.isObject())
        value_ = std::move(vValue);
}

} // namespace vlgs
