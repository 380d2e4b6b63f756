// SPDX-License-Identifier: MIT
#include "viewprops/PropertyString.h"

#include "automation/LateBound.h"
#include "automation/OrderedCollection.h"
#include "support/Raised.h"
#include "viewprops/QuotedText.h"
#include "viewprops/ViewProperty.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

std::string endingOf(RunTimeError cause) {
    return "\r\n" + Error(cause).description().toUtf8();
}

std::string shown(const Variant& value);

std::string shown(const Ref<Object>& object) {
    if (const auto* property = dynamic_cast<ViewProperty*>(object.get()))
        return property->DataType().toUtf8() + ":" + shown(property->Value());
    std::string text;
    auto* dictionary = dynamic_cast<Dictionary*>(object.get());
    const auto members = enumerate(object);
    for (Variant member; members->next(member);) {
        text += text.empty() ? "" : " ";
        text += shown(member);
        if (dictionary)
            text += "=" + shown(dictionary->Item(member));
    }
    return (dictionary ? "{" : "[") + text + (dictionary ? "}" : "]");
}

/// Texts as they are, numbers with "#", Booleans as T and F, lists in [], dictionaries in {}.
std::string shown(const Variant& value) {
    switch (value.type()) {
    case VarType::Object:
        return shown(value.reference());
    case VarType::Boolean:
        return value.boolean() ? "T" : "F";
    case VarType::Long:
        return "#" + std::to_string(value.number());
    default:
        return toText(value).toUtf8();
    }
}

std::string read(const char* text) {
    return shown(Ref<Object>(g_BuildPropertyObject(String::fromUtf8(text))));
}

TEST(PropertyString, IsReadAsItsGrammarSays) {
    const struct {
        const char* text;
        const char* objects;
    } cases[] = {
        {"", "{}"},
        {";;", "{}"},
        {"A=/i5", "{A=i:#5}"},
        {"A=/i5;;B=/bFalse;", "{A=i:#5 B=b:F}"},
        {"B=/b1;C=/b0;D=/bTRUE;E=/b-7", "{B=b:T C=b:F D=b:T E=b:T}"},
        {"A=/I-12;a=/Sx;Ä=/Yy", "{A=i:#-12 a=s:x Ä=y:y}"},
        {"A=/s;B=/y;C=/p", "{A=s: B=y: C=p:}"},
        {" A =/s b ", "{ A =s: b }"},
        {"A=/sx=/i5=/;B=/p=", "{A=s:x B=p:=}"},
        {"A==/i1", "{A==i:#1}"},
        // skipped
        {"A=/x5;B=/;=/i5;=/zz;=/;C=/ı1", "{}"},
        // quotes
        {"T=/s\"a,b;c\";U=/y\"a,b\";V=/p\"(=/)-\"", "{T=s:\"a,b;c\" U=y:\"a[~CM~]b\" "
                                                    "V=p:\"[~OL~][~EQ~][~FS~][~CL~][~DH~]\"}"},
        {"T=/s\"a\"\";b\"", "{T=s:\"a\"\";b\"}"},
        {"T=/s\"\";\"U;\"=/i1", "{T=s:\"\" \"U[~SC~]\"=i:#1}"},
        {"T=/s[~SC~][~XX~][~[~CM~]~CM~];U=/y[~SC~]", "{T=s:;[~XX~][~,~CM~] U=y:[~SC~]}"},
        {"T=/s'a;U=/sb'", "{T=s:'a U=s:b'}"},
        // collections
        {"L=/c(/i1,/i2,/sx)", "{L=c:[i:#1 i:#2 s:x]}"},
        {"L=/c/b1,xpa b;M=/C();N=/c;O=/c(", "{L=c:[b:T p:a b] M=c:[] N=c:[] O=c:[]}"},
        {"L=/c(/i1,,/,/q7,/c(/i1)),/s((a)))", "{L=c:[i:#1 s:((a))]}"},
        {"L=/c(/s\"a,b\",/y\"c,d\")", "{L=c:[s:\"a,b\" y:\"c[~CM~]d\"]}"},
        // dictionaries
        {"M=/d(/sA-/i1,/sB-/i2)", "{M=d:{A=i:#1 B=i:#2}}"},
        {"M=/d/i1-/sone,/s1-/stext,/b1-/btrue", "{M=d:{#1=s:one 1=s:text T=b:T}}"},
        {"M=/d();N=/d;O=/d(/i1-/i2-/i3,/q1-/i2,/i4-,-)", "{M=d:{} N=d:{} O=d:{#1=i:#2}}"},
        {"M=/d(/s\"a-b\"-/s\"-\")", "{M=d:{\"a-b\"=s:\"-\"}}"},
    };
    for (const auto& [text, objects] : cases)
        EXPECT_EQ(read(text), objects) << text;
}

TEST(PropertyString, KeepsTheKeySideOfAPair) {
    const auto properties = g_BuildPropertyObject(u"M=/d(/i7-/sx)");
    const auto pairs = call(properties->Item(u"M").reference(), u"Value").reference();
    const auto valueSide = call(pairs, u"Item", 7).reference();
    EXPECT_EQ(shown(call(valueSide, u"KeySideViewProperty")), "i:#7");
}

TEST(PropertyString, FailuresNameTheReaderAndTheirCause) {
    const struct {
        const char* text;
        RunTimeError cause;
    } cases[] = {
        {"A", RunTimeError::SubscriptOutOfRange},
        {"A=/i1;B/i2", RunTimeError::SubscriptOutOfRange},
        {"M=/d(/i1)", RunTimeError::SubscriptOutOfRange},
        {"M=/d(/i1-/i2,)", RunTimeError::SubscriptOutOfRange},
        {"M=/d(/i-5-/i3)", RunTimeError::TypeMismatch},
        {"A=/ix", RunTimeError::TypeMismatch},
        {"A=/i", RunTimeError::TypeMismatch},
        {"A=/bx", RunTimeError::TypeMismatch},
        {"A=/i2147483648", RunTimeError::Overflow},
        {"L=/c(/i1,/bmaybe)", RunTimeError::TypeMismatch},
        {"A=/i1;A=/i2;", RunTimeError::KeyAlreadyPresent},
        {"M=/d(/i1-/i2,/i1-/i3)", RunTimeError::KeyAlreadyPresent},
    };
    for (const auto& [text, cause] : cases) {
        EXPECT_TRUE(raises(messageError(11519), "VlGeneralServices.modViewProperties.g_BuildPropertyObject",
                           endingOf(cause), [given = text] { read(given); }))
            << text;
    }
}

TEST(PropertyString, QuotesThatAreNotEvenFailWithTheWholeInput) {
    for (const std::string text : {"\"", "A=/s\"a\"\"", "A=/sx;\"", "A;\"\"\""}) {
        EXPECT_TRUE(raises(messageError(11520),
                           "VlGeneralServices.modViewProperties.TokenizeQuotedSubStrings_",
                           "\r\nData= [" + text + "]", [&] { read(text.c_str()); }));
    }
}

TEST(PropertyString, TokenizesByTheQuoteThatIsAskedFor) {
    EXPECT_EQ(TokenizeQuotedSubStrings_(u"'a,b','\"=','(''-'')'", Quote::Single),
              u"'a[~CM~]b','\"[~EQ~]','[~OL~]''[~DH~]''[~CL~]'");
    EXPECT_EQ(TokenizeQuotedSubStrings_(u"it's;", Quote::Double), u"it's;");
}

std::string rewritten(const char* text) {
    return g_BuildPropertyString(g_BuildPropertyObject(String::fromUtf8(text))).toUtf8();
}

TEST(PropertyString, IsWrittenInTheOrderOfItsKeys) {
    const struct {
        const char* text;
        const char* again;
    } cases[] = {
        {"", ""},
        {"z=/Btrue;a=/i+07;M=/sx", "z=/b1;a=/i7;M=/sx;"},
        {"T=/s\"a;b\";U=/y\"a;b\"", "T=/s\"a;b\";U=/y\"a[~SC~]b\";"},
        {"L=/c/i1,/bFalse,/x,/pq;M=/c;", "L=/c(/i1,/b0,/pq);M=/c();"},
        {"M=/d/i1-/bTrue,/bFalse-/sx;N=/d", "M=/d(/i1-/b1,/b0-/sx);N=/d();"},
    };
    for (const auto& [text, again] : cases)
        EXPECT_EQ(rewritten(text), again);
    EXPECT_EQ(g_BuildPropertyString(nullptr), u"");
}

/// What a property that a caller made is written as.
std::string written(const String& type, const Variant& value) {
    const auto properties = make<Dictionary>();
    properties->Add(u"P", make<ViewProperty>(type, value));
    return g_BuildPropertyString(properties).toUtf8();
}

/// A caller's own object with some members of a ViewProperty.
class Foreign final : public Object {
  public:
    DispatchId idOf(std::u16string_view name) const override {
        return name == u"DataType" ? 1 : name == u"Value" ? 2 : unknownMember;
    }
    Variant invoke(DispatchId member, InvokeKind, const Arguments&) override {
        return member == 1 ? Variant(u"i") : Variant(42.0);
    }
};

TEST(PropertyString, WritesWhatCallersMade) {
    EXPECT_EQ(written(u"s", 1.5), "P=/s1.5;");
    EXPECT_EQ(written(u"b", u"true"), "P=/b1;");
    EXPECT_EQ(written(u"i", Variant()), "P=/i;");
    EXPECT_EQ(written(u"", u"x"), "P=/;");
    EXPECT_EQ(written(u"S", u"x"), "P=/S;");
    EXPECT_EQ(written(u"is", u"x"), "P=/is;");
    const auto items = make<OrderedCollection>();
    items->Add(make<ViewProperty>(u"c", make<OrderedCollection>()));
    items->Add(make<Foreign>());
    EXPECT_EQ(written(u"c", items), "P=/c(/c,/i42);");

    const auto properties = make<Dictionary>();
    properties->Add(7, make<Foreign>());
    EXPECT_EQ(g_BuildPropertyString(properties), u"7=/i42;");
}

TEST(PropertyString, WhatCannotBeWrittenNamesTheWriter) {
    const auto pairs = make<Dictionary>();
    pairs->Add(u"k", make<ViewProperty>(u"i", 1)); // without a key side
    const auto foreignPairs = make<Dictionary>();
    foreignPairs->Add(u"k", make<Foreign>());
    const auto plain = make<OrderedCollection>();
    plain->Add(5);
    const struct {
        const char16_t* type;
        Variant value;
        RunTimeError cause;
    } cases[] = {
        {u"b", u"x", RunTimeError::TypeMismatch},
        {u"s", null, RunTimeError::InvalidUseOfNull},
        {u"c", Variant(), RunTimeError::TypeMismatch},
        {u"c", nullptr, RunTimeError::ObjectVariableNotSet},
        {u"c", make<Foreign>(), RunTimeError::NotACollection},
        {u"c", plain, RunTimeError::TypeMismatch},
        {u"d", pairs, RunTimeError::ObjectVariableNotSet},
        {u"d", foreignPairs, RunTimeError::NoSuchMember},
    };
    for (const auto& [type, value, cause] : cases) {
        EXPECT_TRUE(raises(messageError(11519), "VlGeneralServices.modViewProperties.g_BuildPropertyString",
                           endingOf(cause), [t = type, v = value] { written(t, v); }));
    }
}

TEST(PropertyString, TakesTimeInProportionToTheText) {
    // Each would take minutes, and more time than a test is given, if any step went over the whole text
    // again.
    const auto repeated = [](std::string_view piece, std::size_t count, std::string front,
                             std::string_view back) {
        for (std::size_t i = 0; i < count; ++i)
            front += piece;
        return String::fromUtf8(front.append(back));
    };
    constexpr std::size_t count = 300'000;
    for (const auto& text :
         {repeated("/i1,", count, "L=/c(", ")"), repeated("\"\"", count, "A=/s", ""),
          repeated("\"a\";=/\"b\"", count, "=/", ""), repeated("[~", count, "A=/s", ""),
          repeated("=/", count, "A", ""), repeated("(", count, "A=/c", ""), repeated(";", count, "", "")})
        g_BuildPropertyString(g_BuildPropertyObject(text));
}

} // namespace
} // namespace vlgs::test
