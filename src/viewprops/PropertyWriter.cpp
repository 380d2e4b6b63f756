// SPDX-License-Identifier: MIT
#include "automation/LateBound.h"
#include "frame/Errors.h"
#include "viewprops/PropertyString.h"
#include "viewprops/ViewProperty.h"

#include <string>

namespace vlgs {

namespace {

/// The property that an object is. What another program made is read into one, its key side left alone.
Ref<ViewProperty> propertyOf(const Variant& value) {
    const auto object = toObject(value);
    if (auto* property = dynamic_cast<ViewProperty*>(object.get()))
        return Ref<ViewProperty>(property);
    return make<ViewProperty>(toText(call(object, u"DataType")), call(object, u"Value"));
}

Ref<ViewProperty> keySideOf(const Variant& value) {
    return propertyOf(call(toObject(value), u"KeySideViewProperty"));
}

/// Whether a type letter is one of a few.
bool isOneOf(const String& letter, std::u16string_view letters) {
    return letter.length() == 1 && letters.find(letter[0]) != letters.npos;
}

/// The type letter and, of a plain value, its text.
void writePlain(std::u16string& out, const ViewProperty& property) {
    out += property.DataType();
    if (isOneOf(property.DataType(), u"b"))
        out += toBoolean(property.Value()) ? u'1' : u'0';
    else if (isOneOf(property.DataType(), u"isyp"))
        out += toText(property.Value());
}

/// Writes "(", what `write` makes of each member, "," between them, and ")".
template <class Write>
void writeList(std::u16string& out, const Ref<Object>& list, const Write& write) {
    const auto members = enumerate(list);
    out += u'(';
    bool first = true;
    for (Variant member; members->next(member); first = false) {
        out += first ? u"/" : u",/";
        write(member);
    }
    out += u')';
}

void writeCollection(std::u16string& out, const Ref<Object>& collection) {
    writeList(out, collection, [&](const Variant& item) { writePlain(out, *propertyOf(item)); });
}

void writeDictionary(std::u16string& out, const Ref<Object>& dictionary) {
    writeList(out, dictionary, [&](const Variant& key) {
        const Variant valueSide = call(dictionary, u"Item", key);
        writePlain(out, *keySideOf(valueSide));
        out += u"-/";
        writePlain(out, *propertyOf(valueSide));
    });
}

void writeProperty(std::u16string& out, const ViewProperty& property) {
    if (isOneOf(property.DataType(), u"cd")) {
        out += property.DataType();
        const bool keyed = property.DataType()[0] == u'd';
        (keyed ? writeDictionary : writeCollection)(out, toObject(property.Value()));
    } else {
        writePlain(out, property);
    }
}

} // namespace

String g_BuildPropertyString(const Ref<Dictionary>& oDictionary) {
    return underMessage(u"VlGeneralServices.modViewProperties.g_BuildPropertyString",
                        eMsg_ErrorReadingViewPropertiesStringX, [&]() -> String {
                            std::u16string out;
                            if (!oDictionary)
                                return {};
                            const auto keys = enumerate(oDictionary);
                            for (Variant key; keys->next(key);) {
                                out += toText(key);
                                out += u"=/";
                                writeProperty(out, *propertyOf(oDictionary->Item(key)));
                                out += u';';
                            }
                            return out;
                        });
}

} // namespace vlgs
