// The component's one list of classes, and what is looked up in it. Type library, COM server, C interface,
// Python module and command line all start here.
//
// A new class is one line in `Classes`. Enumerations and records that some member takes or gives are found
// through the descriptions; only those that no member mentions are listed.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Dictionary.h"
#include "automation/OrderedCollection.h"
#include "cipher/Cipher.h"
#include "conversion/Conversion.h"
#include "dde/DDE.h"
#include "files/Files.h"
#include "frame/InterfaceIdentifiers.h"
#include "frame/Messages.h"
#include "frame/Resource.h"
#include "frame/Restricted.h"
#include "general/GUID.h"
#include "general/General.h"
#include "ini/Buffer.h"
#include "ini/Collection.h"
#include "ini/INIFile.h"
#include "ini/Property.h"
#include "locking/CorvaTools.h"
#include "packager/ObjectPackager.h"
#include "registry/RegUtil.h"
#include "registry/RegValue.h"
#include "viewprops/ViewProperties.h"
#include "viewprops/ViewProperty.h"

#include <span>
#include <string_view>

namespace vlgs {

template <class... T>
struct TypeList {};

/// The classes of the component, in the order of the type library.
using Classes =
    TypeList<Collection, DDE, Files, General, GUID, INIFile, Property, RegUtil, RegValue, CorvaTools, Buffer,
             Restricted, ViewProperties, ViewProperty, ObjectPackager, Conversion, Cipher, Resource>;

/// Classes of the run time that hosts without it offer under its names.
using RunTimeClasses = TypeList<OrderedCollection, Dictionary>;

/// Enumerations and records that no member mentions.
using FurtherEnumerations =
    TypeList<enumInterfaceIdentifiers, enumMessages, enumAttrDataTypes, enumDimensionCopyTypes>;
using FurtherRecords = TypeList<>;

/// The descriptions of `Classes`, in that order.
std::span<const ClassInfo* const> classes();
/// The descriptions of `RunTimeClasses`.
std::span<const ClassInfo* const> runTimeClasses();
/// Every enumeration and record of the component: those of the members in interface order, then the others.
std::span<const EnumInfo* const> enumerations();
std::span<const RecordInfo* const> records();

/// The class of a programmatic identifier ("VlGeneralServices.Files") or, of the component's own classes, of
/// a bare name ("Files"), in any case; null when there is none.
const ClassInfo* findClass(std::u16string_view name);

/// A new object of the class that `findClass` finds. Raises 429 for an unknown class and for one that is not
/// creatable, and what the class's own initialisation raises.
Ref<Object> createObject(std::u16string_view name);

} // namespace vlgs
