// SPDX-License-Identifier: MIT
#include "general/General.h"

#include "frame/ComponentFacts.h"
#include "frame/Messages.h"
#include "general/Arrays.h"
#include "general/Dictionaries.h"
#include "general/HtmlText.h"
#include "general/Lists.h"

namespace vlgs {

const ClassInfo& General::description() {
    return classInfoOf<General>();
}

String General::ClassDescription() const {
    return DescribeText(eMsg_ClassGeneralDescription);
}

String General::VariantToCSV(const Variant& vKeys, std::int32_t lStart, std::int32_t lEnd) {
    return g_VariantToCSV(vKeys, lStart, lEnd);
}

Variant General::CSVToVariant(const String& sKeys, const String& sDelimiter, std::int32_t, std::int32_t,
                              std::int32_t lChunkSize) {
    return g_CSVToVariant(sKeys, sDelimiter, lChunkSize);
}

String General::CollectionToCSV(const Ref<Object>& colKeys, std::int32_t lStart, std::int32_t lEnd) {
    return g_CollectionToCSV(colKeys, lStart, lEnd);
}

Ref<OrderedCollection> General::ParseDelimitedString(String& sData, String& sDelimiter) {
    return g_ParseDelimitedString(sData, sDelimiter);
}

Ref<Object> General::CopyVariantArrayToDictionary(const Variant& vSourceArray,
                                                  Ref<Object>* oDestinationDictionary) {
    return g_CopyVariantArrayToDictionary(vSourceArray, oDestinationDictionary);
}

Variant General::CopyDictionaryToVariantArray(Ref<Object>& oSourceDictionary, Variant* vDestinationArray) {
    return g_CopyDictionaryToVariantArray(oSourceDictionary, vDestinationArray);
}

std::int32_t General::GetArrayUpperDimension(const Variant& vVariant, std::int16_t* iLowerDimensionLBound) {
    return g_GetArrayUpperDimension(vVariant, iLowerDimensionLBound);
}

std::uint8_t General::GetArrayDimensions(Variant& vArray) {
    return g_GetArrayDimensions(vArray);
}

std::int32_t General::GetArrayElemCount(Variant& vArray, std::uint8_t* lDimension) {
    return g_GetArrayElemCount(vArray, lDimension ? *lDimension : std::uint8_t{1});
}

std::int32_t General::GetArrayElemIndexFromPosition(Variant& vArray, std::int32_t& lPosition,
                                                    std::uint8_t* lDimension) {
    return g_GetArrayElemIndexFromPosition(vArray, lPosition, lDimension ? *lDimension : std::uint8_t{1});
}

bool General::IsSameDataType(const Variant& vValue, Array& vDataTypes) {
    return g_IsSameDataType(vValue, vDataTypes);
}

String General::HTMLtoText(const String& sSourceHTMLText, const Variant& bRemoveScriptOnly) {
    return g_HTMLtoText(sSourceHTMLText, bRemoveScriptOnly);
}

} // namespace vlgs
