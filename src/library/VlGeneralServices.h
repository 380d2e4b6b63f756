// SPDX-License-Identifier: MIT
// Every class of the library, and their creation by name.
//
//     #include <VlGeneralServices/VlGeneralServices.h>
//
//     const auto files = vlgs::make<vlgs::Files>();
//     const vlgs::Ref<vlgs::INIFile> document = files->RetrieveINIFile(u"/srv/projects/settings.ini");
//     std::cout << document->KeyValue(u"Window", u"Width").toUtf8() << '\n';
//
// Each class has a header of its own name, too: <VlGeneralServices/Files.h>. Objects are created by `make`,
// held by `Ref` and used on the thread that made them; failures are raised as `vlgs::Error`.
#pragma once

#include "automation/Dictionary.h"
#include "automation/OrderedCollection.h"
#include "base/Error.h"
#include "cipher/Cipher.h"
#include "conversion/Conversion.h"
#include "dde/DDE.h"
#include "files/Files.h"
#include "frame/Messages.h"
#include "frame/Resource.h"
#include "frame/Restricted.h"
#include "general/GUID.h"
#include "general/General.h"
#include "ini/Buffer.h"
#include "ini/Collection.h"
#include "ini/INIFile.h"
#include "ini/Property.h"
#include "library/Classes.h"
#include "locking/CorvaTools.h"
#include "packager/ObjectPackager.h"
#include "registry/RegUtil.h"
#include "registry/RegValue.h"
#include "viewprops/ViewProperties.h"
#include "viewprops/ViewProperty.h"
