// SPDX-License-Identifier: MIT
// The enumerations of the registry's classes.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

#define VLGS_HIVES(value)                                                                                    \
    value(eHiveClassesRoot, -2147483648) value(eHiveCurrUser, -2147483647)                                   \
        value(eHiveLocalMachine, -2147483646) value(eHiveUsers, -2147483645)                                 \
            value(eHiveCurrConfig, -2147483644) value(eHiveDynData, -2147483643)
VLGS_ENUMERATION(enumHives, "8274EE80-6D74-4CFF-9748-BE5EB36CBDB7", "Hives of the registry", VLGS_HIVES)

#define VLGS_REG_SECURITY(value)                                                                             \
    value(eReadControl, 131072) value(eQueryValue, 1) value(eSetValue, 2) value(eCreateSubKey, 4)            \
        value(eEnumSubKeys, 8) value(eNotify, 16) value(eCreateLink, 32)
VLGS_ENUMERATION(enumRegSecurity, "A2E3154D-32F0-43D3-9F8C-D2116733FF08", "What a key is opened for",
                 VLGS_REG_SECURITY)

#define VLGS_REG_UTIL_ERROR(value)                                                                           \
    value(eVBErr, 0) value(eBadPath, 16) value(eBadKey, 17) value(eNoCollection, 18)                         \
        value(eNoRegValueObject, 19) value(eNoKeyString, 20) value(eNoValueString, 21)
VLGS_ENUMERATION(enumRegUtilError, "22762967-5415-421D-985D-46F4F742EBE4",
                 "Reasons of a failure besides the registry's status codes", VLGS_REG_UTIL_ERROR)

#define VLGS_REG_DATA_TYPE(value)                                                                            \
    value(eAsciiZString, 1) value(eAsciiExpandZString, 2) value(eBinary, 3) value(eDWord, 4)                 \
        value(eDWordLittleEndian, 4) value(eDWordBigEndian, 5) value(eLink, 6) value(eMultiZString, 7)       \
            value(eResourceList, 8)
VLGS_ENUMERATION(enumRegDataType, "1D7BD686-7F47-4CD0-B39A-1DC6254B10FB", "Types of a registry value",
                 VLGS_REG_DATA_TYPE)

} // namespace vlgs
