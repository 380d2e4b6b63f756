// SPDX-License-Identifier: MIT
// The component's one list of classes. Whoever only looks classes up includes library/Classes.h, which knows
// none of them.
//
// A new class is one line in `Classes`. Enumerations and records that some member takes or gives are found
// through the descriptions; only those that no member mentions are listed.
#pragma once

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

} // namespace vlgs
