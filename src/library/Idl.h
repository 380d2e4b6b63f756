// SPDX-License-Identifier: MIT
// The component's interface definition and its side-by-side manifest, both derived from the class
// descriptions.
//
// Each class has one hidden, dual, non-extensible interface, its name with a leading underscore, and a class
// of its own name; enumerations, records and the outgoing interfaces stand beside them. How a type travels
// is settled here for the type library and in com/Thunks.h for the calls.
#pragma once

#include <string>

namespace vlgs {

/// The definition in the interface definition language, as `typelib/VlGeneralServices.idl` holds it.
std::string interfaceDefinition();

/// The manifest with which a program uses VlGeneralServices.dll without registration, as
/// `typelib/VlGeneralServices.manifest` holds it.
std::string sideBySideManifest();

} // namespace vlgs
