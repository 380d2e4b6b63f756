// SPDX-License-Identifier: MIT
// The class `Restricted`, whose name, number and frame stand for the product's closed security services.
#pragma once

#include "frame/Component.h"

namespace vlgs {

class VLGS_API Restricted final : public CountedComponent {
  public:
    static constexpr auto describe() {
        return describeClass<Restricted>({.name = "Restricted",
                                          .help = "The frame of the closed security services",
                                          .number = _eInterfaceID_Restricted,
                                          .classId = guid("6C95B341-12AE-4E4D-B9D1-273FFC78B227"),
                                          .interfaceId = guid("82DC93E2-A7D0-4B9F-9615-4A7032987C4C"),
                                          .creatable = true},
                                         identity());
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }
};

} // namespace vlgs
