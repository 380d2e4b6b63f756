// SPDX-License-Identifier: MIT
// What is looked up in the component's list of classes. Type library, COM server, C interface, Python module
// and command line all start here.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Object.h"

#include <span>
#include <string_view>

namespace vlgs {

/// The descriptions of the component's classes, in the order of the type library.
VLGS_API std::span<const ClassInfo* const> classes();
/// Those of the run time's classes that hosts without it offer under its names.
VLGS_API std::span<const ClassInfo* const> runTimeClasses();
/// Every enumeration and record of the component: those of the members in interface order, then the others.
VLGS_API std::span<const EnumInfo* const> enumerations();
VLGS_API std::span<const RecordInfo* const> records();

/// The class of a programmatic identifier ("VlGeneralServices.Files") or, of the component's own classes, of
/// a bare name ("Files"), in any case; null when there is none.
VLGS_API const ClassInfo* findClass(std::u16string_view name);

/// A new object of the class that `findClass` finds. Raises 429 for an unknown class and for one that is not
/// creatable, and what the class's own initialisation raises.
VLGS_API Ref<Object> createObject(std::u16string_view name);

} // namespace vlgs
