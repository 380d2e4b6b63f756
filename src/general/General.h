// SPDX-License-Identifier: MIT
// Lists, arrays, dictionaries and HTML for callers: the shared routines as members of one class.
#pragma once

#include "automation/OrderedCollection.h"
#include "frame/Component.h"
#include "general/DimensionCopyTypes.h"

namespace vlgs {

/// Each member forwards to the routine of its name: Lists.h, Arrays.h, Dictionaries.h, HtmlText.h.
class VLGS_API General final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// From the message catalogue.
    String ClassDescription() const override;

    String VariantToCSV(const Variant& vKeys, std::int32_t lStart = 0, std::int32_t lEnd = 0);
    /// `lStart` and `lEnd` have no effect.
    Variant CSVToVariant(const String& sKeys, const String& sDelimiter = u",", std::int32_t lStart = 0,
                         std::int32_t lEnd = 0, std::int32_t lChunkSize = standardChunkSize);
    String CollectionToCSV(const Ref<Object>& colKeys, std::int32_t lStart = 0, std::int32_t lEnd = 0);
    Ref<OrderedCollection> ParseDelimitedString(String& sData, String& sDelimiter);
    Ref<Object> CopyVariantArrayToDictionary(const Variant& vSourceArray,
                                             Ref<Object>* oDestinationDictionary = nullptr);
    Variant CopyDictionaryToVariantArray(Ref<Object>& oSourceDictionary,
                                         Variant* vDestinationArray = nullptr);
    std::int32_t GetArrayUpperDimension(const Variant& vVariant,
                                        std::int16_t* iLowerDimensionLBound = nullptr);
    std::uint8_t GetArrayDimensions(Variant& vArray);
    /// Dimension 1 when it is left out.
    std::int32_t GetArrayElemCount(Variant& vArray, std::uint8_t* lDimension = nullptr);
    std::int32_t GetArrayElemIndexFromPosition(Variant& vArray, std::int32_t& lPosition,
                                               std::uint8_t* lDimension = nullptr);
    bool IsSameDataType(const Variant& vValue, Array& vDataTypes);
    String HTMLtoText(const String& sSourceHTMLText, const Variant& bRemoveScriptOnly = false);

  private:
    static constexpr std::int32_t standardChunkSize = 50;
};

constexpr auto General::describe() {
    return describeClass<General>(
        {.name = "General",
         .help = "Lists, arrays, dictionaries and HTML texts",
         .number = eInterfaceID_General,
         .classId = guid("f9bf6f2d-2c7e-44d7-b5a2-073b1e310e9e"),
         .interfaceId = guid("a195c8d9-c31e-4d4b-9fd1-c224bbe4df04"),
         .creatable = true},
        identity(),
        method<&General::VariantToCSV>(
            1, "VariantToCSV",
            "Returns the a comma-delimited string containing the members of each element of a Variant array.",
            parameter("vKeys", "an array with one or two dimensions"),
            optional("lStart", "the first index; the array's own where it does not stand"),
            optional("lEnd", "the last index; the array's own where it does not stand"))
            .neverRaises(u"0"),
        method<&General::CSVToVariant>(
            2, "CSVToVariant",
            "Returns a Variant array containing the members of a comma-delimited string. Blank-spaces are "
            "set to zero. Output is reverse of input.",
            parameter("sKeys", "whole numbers between delimiters"),
            optional("sDelimiter", u",", "its first character separates the fields"),
            optional("lStart", "without effect"), optional("lEnd", "without effect"),
            optional("lChunkSize", standardChunkSize, "by how many fields the room for the result grows"))
            .raises(RunTimeError::SubscriptOutOfRange,
                    "a field without a digit at its end lies beyond the room made so far")
            .raises(RunTimeError::Overflow, "a number is beyond 32 bits")
            .example("General.CSVToVariant 1,2,3", "3\n2\n1"),
        method<&General::CollectionToCSV>(
            3, "CollectionToCSV",
            "Returns the a comma-delimited string conataining the members of each element of a "
            "VBA.Collection object.",
            parameter("colKeys", "any object with Count and Item"),
            optional("lStart", "the first index; the array's own where it does not stand"),
            optional("lEnd", "the last index; the array's own where it does not stand"))
            .neverRaises(u"0"),
        method<&General::ParseDelimitedString>(
            4, "ParseDelimitedString",
            "Returns the items of a delimited string, in upper case, as an ordered collection.",
            parameter("sData", "the text, which loses its outer blanks"),
            parameter("sDelimiter", "the one character between the items"))
            .neverRaises(),
        method<&General::CopyVariantArrayToDictionary>(
            5, "CopyVariantArrayToDictionary",
            "Copies the contents of a Variant array (up to two dimensions) to a dictionary.\r\n"
            "Keys are the texts of the elements.\r\nDuplicates are not added.",
            parameter("vSourceArray", "an array with one or two dimensions"),
            optional("oDestinationDictionary",
                     "the dictionary to fill; receives a new one when it is no object"))
            .neverRaises(),
        method<&General::CopyDictionaryToVariantArray>(
            6, "CopyDictionaryToVariantArray",
            "Copies the contents of a Dictionary to a Variant array (up to two dimensions) .\r\n"
            "Duplicates are added.\r\nOnly the last dimension of the array is copied.",
            parameter("oSourceDictionary", "a dictionary, or any object with Items"),
            optional("vDestinationArray", "the array that grows; becomes one when it is none"))
            .neverRaises(),
        method<&General::GetArrayUpperDimension>(
            7, "GetArrayUpperDimension",
            "Determines the uppermost dimension of an array.\r\nOptionally returns the lower-bound of the "
            "first dimension.",
            parameter("vVariant", "any value"),
            optional("iLowerDimensionLBound", "receives the lower bound of the first dimension"))
            .neverRaises(),
        method<&General::GetArrayDimensions>(8, "GetArrayDimensions",
                                             "Returns the number of dimensions in an array",
                                             parameter("vArray", "the array")),
        method<&General::GetArrayElemCount>(
            9, "GetArrayElemCount", "Returns the number of elements in the Nth dimension of an array",
            parameter("vArray", "the array"), optional("lDimension", 1, "the dimension, from 1"))
            .neverRaises(),
        method<&General::GetArrayElemIndexFromPosition>(
            10, "GetArrayElemIndexFromPosition",
            "Returns the index for a one-base position in a one-based or zero-based array",
            parameter("vArray", "the array"), parameter("lPosition", "a position from 1"),
            optional("lDimension", 1, "the dimension, from 1"))
            .neverRaises(),
        method<&General::IsSameDataType>(
            11, "IsSameDataType", "Always True: no value is refused, whatever the data types listed.",
            parameter("vValue", "any value"), parameter("vDataTypes", "an array of type codes")),
        method<&General::HTMLtoText>(
            12, "HTMLtoText", "Returns the plain text of an HTML text, or the HTML text without its scripts.",
            parameter("sSourceHTMLText", "the HTML text"),
            optional("bRemoveScriptOnly", 0, "whether only the scripts are removed")));
}

} // namespace vlgs
