// SPDX-License-Identifier: MIT
// Values across the boundary and back.
#include "com/Values.h"
#include "automation/Convert.h"
#include "base/Error.h"

#include <gtest/gtest.h>

#include <functional>

namespace vlgs::com {
namespace {

Variant throughVariant(const Variant& value) {
    OleVariant wire;
    toVariant(value, wire.get());
    return fromVariant(wire.get());
}

TEST(Values, ComeBackAsTheyWent) {
    const Variant values[] = {
        Variant(),
        null,
        missing,
        std::int16_t{-7},
        std::int32_t{1 << 30},
        1.5f,
        -2.25e100,
        Currency{12345},
        Date{-1.25},
        u"Gr\u00f6\u00dfe",
        String(std::u16string_view(u"a\0b", 3)),
        String(),
        true,
        false,
        std::uint8_t{200},
        Decimal{3, 0x80, 1, 2},
        nullptr,
        Array::ofStrings({u"x", u"", String(std::u16string_view(u"y\0z", 3))}),
        Array::ofBytes({1, 2, 255}),
        Array(),
        Array::ofVariants({1, u"two", Variant(), Array::ofLongs({3, 4})}, -5),
    };
    for (const auto& value : values)
        EXPECT_EQ(throughVariant(value), value) << code(value.type());
}

TEST(Values, EveryElementTypeAndBoundSurvives) {
    for (const VarType type :
         {VarType::Integer, VarType::Long, VarType::Single, VarType::Double, VarType::Currency, VarType::Date,
          VarType::String, VarType::Boolean, VarType::Variant, VarType::Byte, VarType::Object}) {
        Array array(type, {{-3, 2}, {100, 3}, {0, 1}});
        if (type != VarType::Object)
            for (std::size_t i = 0; i < array.size(); ++i)
                array.put(i, changeType(static_cast<std::int32_t>(i),
                                        type == VarType::Variant ? VarType::Long : type));
        EXPECT_EQ(throughVariant(array), Variant(array)) << code(type);
    }
}

TEST(Values, ElementsKeepTheirIndices) {
    Array array(VarType::Long, {{1, 2}, {5, 3}});
    const std::int32_t at[] = {2, 7};
    array.set(at, 42);
    OleVariant wire;
    toVariant(array, wire.get());
    LONG indices[] = {2, 7};
    LONG found = 0;
    ASSERT_EQ(SafeArrayGetElement(wire.get().parray, indices, &found), S_OK);
    EXPECT_EQ(found, 42);
}

struct Foreign {
    VARTYPE type;
    std::int64_t bits;
    Variant value;
};

TEST(Values, TypesThatTheLibraryLacksComeAsTheNearestOnes) {
    const Foreign cases[] = {
        {VT_I1, -5, std::int16_t{-5}},
        {VT_UI2, 65535, 65535},
        {VT_UI4, 7, 7},
        {VT_UI4, 4294967295, Decimal{0, 0, 0, 4294967295u}},
        {VT_INT, -9, -9},
        {VT_UINT, 9, 9},
        {VT_I8, -2147483648LL, std::int32_t(-2147483647 - 1)},
        {VT_I8, -2147483649LL, Decimal{0, 0x80, 0, 2147483649u}},
        {VT_UI8, -1, Decimal{0, 0, 0, 0xFFFFFFFFFFFFFFFF}},
    };
    for (const auto& [type, bits, value] : cases) {
        VARIANT wire;
        wire.vt = type;
        wire.llVal = bits;
        EXPECT_EQ(fromVariant(wire), value) << type;
        VARIANT reference;
        reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
        reference.byref = &wire.llVal;
        EXPECT_EQ(fromVariant(reference), value) << "by reference " << type;
        assign(reference, Variant(3));
        EXPECT_EQ(fromVariant(wire), type == VT_I1 ? Variant(std::int16_t{3}) : Variant(3)) << type;
    }
}

TEST(Values, ReferencesOfEveryTypeAreReadAndWritten) {
    for (const VARTYPE type :
         {VT_I2, VT_I4, VT_R4, VT_R8, VT_CY, VT_DATE, VT_BSTR, VT_BOOL, VT_UI1, VT_DECIMAL}) {
        OleVariant variable;
        toVariant(changeType(1, static_cast<VarType>(type)), variable.get());
        VARIANT reference;
        reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
        reference.byref =
            type == VT_DECIMAL ? static_cast<void*>(&variable.get().decVal) : &variable.get().llVal;
        EXPECT_EQ(toDouble(fromVariant(reference)), type == VT_BOOL ? -1 : 1) << type;
        assign(reference, u"0");
        variable.get().vt = type; // a decimal's type lies in its first bytes
        EXPECT_EQ(fromVariant(variable.get()), changeType(u"0", static_cast<VarType>(type))) << type;
    }
    VARIANT inner;
    VariantInit(&inner);
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &inner;
    assign(reference, u"text");
    EXPECT_EQ(fromVariant(reference), Variant(u"text"));
    assign(reference, Array::ofLongs({1}));
    EXPECT_EQ(inner.vt, VT_ARRAY | VT_I4);
    VariantClear(&inner);
}

TEST(Values, WritesThatDoNotFitAreRefused) {
    LONG number = 5;
    VARIANT reference;
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    EXPECT_THROW(assign(reference, u"no number"), Error);
    EXPECT_THROW(assign(reference, 1e20), Error);
    EXPECT_THROW(assign(reference, Array::ofLongs({1})), Error);
    EXPECT_EQ(number, 5);
    VARIANT nothing;
    nothing.vt = VT_BYREF | VT_I4;
    nothing.byref = nullptr;
    EXPECT_THROW(fromVariant(nothing), Error);
}

TEST(Values, ArraysOfFixedSizeAreFilledInPlace) {
    SAFEARRAY* fixed = SafeArrayCreateVector(VT_I4, 0, 3);
    fixed->fFeatures |= FADF_FIXEDSIZE;
    SAFEARRAY* variable = fixed;
    assign(variable, Array::ofLongs({7, 8, 9}));
    EXPECT_EQ(variable, fixed);
    EXPECT_EQ(fromSafeArray(variable), Array::ofLongs({7, 8, 9}));
    assign(variable, Array::ofStrings({u"a"}));
    assign(variable, Array::ofLongs({1, 2, 3, 4}));
    EXPECT_EQ(fromSafeArray(variable), Array::ofLongs({7, 8, 9})) << "what has another shape stays out";
    SafeArrayDestroy(fixed);
}

} // namespace
} // namespace vlgs::com
