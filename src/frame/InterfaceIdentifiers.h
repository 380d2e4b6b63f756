// SPDX-License-Identifier: MIT
// The numbers that the classes answer as their `ClassID`.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

// clang-format off
#define VLGS_INTERFACE_IDENTIFIERS(value) \
    value(eInterfaceID_Empty, 0) \
    value(eInterfaceID_Collection, 151) \
    value(eInterfaceID_DDE, 152) \
    value(eInterfaceID_Files, 153) \
    value(eInterfaceID_General, 154) \
    value(eInterfaceID_GUID, 155) \
    value(eInterfaceID_INIFile, 156) \
    value(eInterfaceID_Property, 157) \
    value(eInterfaceID_RegUtil, 158) \
    value(eInterfaceID_RegValue, 159) \
    value(eInterfaceID_CorvaTools, 160) \
    value(_eInterfaceID_Buffer, 161) \
    value(_eInterfaceID_Restricted, 162) \
    value(eInterfaceID_ViewProperties, 163) \
    value(eInterfaceID_ViewProperty, 164) \
    value(eInterfaceID_ObjectPackager, 165) \
    value(eInterfaceID_Conversion, 166)
// clang-format on
VLGS_ENUMERATION(enumInterfaceIdentifiers, "6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7E01",
                 "Numbers of the component's classes", VLGS_INTERFACE_IDENTIFIERS)

} // namespace vlgs
