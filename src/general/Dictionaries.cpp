// SPDX-License-Identifier: MIT
#include "general/Dictionaries.h"

#include "automation/Array.h"
#include "automation/Convert.h"
#include "automation/Dictionary.h"
#include "automation/LateBound.h"
#include "base/Error.h"
#include "general/Arrays.h"

#include <vector>

namespace vlgs {

namespace {

/// Runs a step whose failure is passed over.
template <class Step>
void passOver(Step&& step) {
    try {
        step();
    } catch (const Error&) {
    }
}

void addUnderItsText(const Ref<Object>& dictionary, const Variant& member) {
    String key;
    passOver([&] { key = toText(member); });
    bool known = false;
    passOver([&] { known = toBoolean(call(dictionary, u"Exists", key)); });
    if (!known)
        passOver([&] { call(dictionary, u"Add", key, member); });
}

void append(Variant& destination, const Array& items) {
    const auto count = static_cast<std::int32_t>(items.size());
    if (g_GetArrayDimensions(destination) == 0) {
        destination = Array::vector(VarType::Variant, 0);
    }
    Array& array = destination.array();
    std::vector<std::int32_t> indices;
    for (const auto& dimension : array.dimensions())
        indices.push_back(dimension.lower);
    const auto last = array.dimensions().back();
    indices.back() = last.lower + last.count;
    array.resizeLast(last.count + count);
    for (std::size_t i = 0; i < items.size(); ++i, ++indices.back())
        passOver([&] { array.set(indices, items.at(i)); });
}

} // namespace

Ref<Object> g_CopyVariantArrayToDictionary(const Variant& vSourceArray, Ref<Object>* oDestinationDictionary) {
    Ref<Object> made;
    Ref<Object>& dictionary = oDestinationDictionary ? *oDestinationDictionary : made;
    if (!dictionary)
        dictionary = make<Dictionary>();
    const auto dimensions = g_GetArrayDimensions(vSourceArray);
    if (dimensions != 1 && dimensions != 2)
        return nullptr;
    // A share of its own: the dictionary may be a caller's, whose code may change the variable.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const Array source = vSourceArray.array();
    const auto step =
        dimensions == 1 ? std::size_t{1} : static_cast<std::size_t>(source.dimensions()[0].count);
    for (std::size_t offset = 0; offset < source.size(); offset += step)
        addUnderItsText(dictionary, source.at(offset));
    return dictionary;
}

Variant g_CopyDictionaryToVariantArray(const Ref<Object>& oSourceDictionary, Variant* vDestinationArray) {
    if (!oSourceDictionary)
        return {};
    Variant made;
    Variant& destination = vDestinationArray ? *vDestinationArray : made;
    passOver([&] {
        const Variant items = call(oSourceDictionary, u"Items");
        if (items.isArray())
            append(destination, items.array());
    });
    return destination;
}

} // namespace vlgs
