// SPDX-License-Identifier: MIT
// Copying between arrays and keyed dictionaries.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

/// Adds the members of an array to a dictionary, the run time's or any object with `Exists` and `Add`, each
/// under its own text as key; of members with equal text the first is taken, and all that have no text share
/// the key "". Of an array with two dimensions the first row is taken.
///
/// Without a dictionary one is made and stored in `oDestinationDictionary`. The result is that dictionary, or
/// no object for any other number of dimensions and for a value that is no array. Failures are passed over.
Ref<Object> g_CopyVariantArrayToDictionary(const Variant& vSourceArray, Ref<Object>* oDestinationDictionary);

/// Appends the values of a dictionary, the run time's or any object with `Items`, to an array, in the order
/// in which they were added. The array's last dimension grows by as many elements; of several dimensions the
/// first row receives the values. What is no array becomes one from 0. The result is a copy of the array,
/// Empty without a dictionary. Failures are passed over: a value that the element type refuses leaves its
/// element as it is.
Variant g_CopyDictionaryToVariantArray(const Ref<Object>& oSourceDictionary, Variant* vDestinationArray);

} // namespace vlgs
