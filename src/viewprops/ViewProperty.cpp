// SPDX-License-Identifier: MIT
#include "viewprops/ViewProperty.h"

namespace vlgs {

const ClassInfo& ViewProperty::description() {
    return classInfoOf<ViewProperty>();
}

void ViewProperty::Clear() noexcept {
    // What is let go may run its owner's code, so it goes only after everything here is in its place.
    const Ref<ViewProperty> keySide = std::exchange(keySide_, nullptr);
    type_ = {};
    Variant value = value_.isObject() ? Variant(nullptr) : Variant(String());
    value.swap(value_);
}

} // namespace vlgs
