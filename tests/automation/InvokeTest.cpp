// Late-bound calls: how names, arguments and kinds find their member, and what goes wrong when they do not.
#include "automation/LateBound.h"
#include "support/Raised.h"
#include "support/TestBed.h"

#include <gtest/gtest.h>

#include <limits>

namespace vlgs::test {
namespace {

class Invoke : public testing::Test {
  protected:
    const Ref<Object> bed = make<TestBed>();

    template <class... Values>
    Variant run(const char16_t* name, Values... values) {
        return call(bed, name, Variant(values)...);
    }
    template <class... Values>
    std::int32_t failure(const char16_t* name, Values... values) {
        return raised([&] { run(name, values...); }).number;
    }
    Variant write(const char16_t* name, InvokeKind kind, std::vector<Variant> arguments) {
        return callMember(bed, name, kind, arguments);
    }
    Variant named(const char16_t* name, std::vector<Variant> positional,
                  std::vector<NamedArgument> arguments) {
        return bed->invoke(bed->idOf(name), InvokeKind::MethodOrGet, {positional, arguments});
    }
};

TEST_F(Invoke, FindsMembersInAnyCaseAndNoOthers) {
    EXPECT_EQ(bed->idOf(u"ECHO"), 1);
    EXPECT_EQ(bed->idOf(u"item"), defaultMember);
    EXPECT_EQ(bed->idOf(u"NEWENUM"), enumerationMember);
    for (const char16_t* name : {u"", u"Ech", u"Echoo", u"Ech\u00f6", u"Told"}) {
        EXPECT_EQ(bed->idOf(name), unknownMember) << String(name).toUtf8();
        EXPECT_EQ(failure(name), 438);
    }
    for (const DispatchId id :
         {-5, -2, 999, std::numeric_limits<DispatchId>::max(), std::numeric_limits<DispatchId>::min()})
        EXPECT_EQ(raised([&] { bed->invoke(id, InvokeKind::MethodOrGet, {}); }).number, 438) << id;
}

TEST_F(Invoke, CoercesEachArgumentToItsParameter) {
    struct Case {
        Variant number, longNumber, real, flag, text;
        const char16_t* result;
    };
    const Case cases[] = {
        {2, 3, 4.5, true, u"b", u"2,3,4.5,True,b"},
        {u"2", u"3", u"4.5", u"false", 7, u"2,3,4.5,False,7"},
        {2.5, 3.5, true, 2, false, u"2,4,-1,True,False"},
        {Variant(), Variant(), Variant(), Variant(), Variant(), u"0,0,0,False,"},
        {true, Currency{15000}, std::uint8_t{9}, u"0", 1.5, u"-1,2,9,False,1.5"},
        {-32768, u"-2147483648", u"1e3", -1, u"", u"-32768,-2147483648,1000,True,"},
    };
    for (const auto& [number, longNumber, real, flag, text, result] : cases)
        EXPECT_EQ(toText(run(u"Typed", number, longNumber, real, flag, text)), result)
            << String(result).toUtf8();
}

TEST_F(Invoke, RaisesWhatACoercionRaises) {
    struct Case {
        Variant number, text;
        std::int32_t error;
    };
    const Case cases[] = {
        {32768, u"", 6},
        {u"1e30", u"", 6},
        {u"x", u"", 13},
        {null, u"", 94},
        {1, null, 94},
        {1, Variant(nullptr), 91},
        {1, Array::ofLongs({1}), 13},
        {Array::ofLongs({1}), u"", 13},
        {Variant(ErrorValue{5}), u"", 13},
    };
    for (const auto& [number, text, error] : cases)
        EXPECT_EQ(failure(u"Typed", number, 1, 1, true, text), error)
            << code(number.type()) << " " << code(text.type());
    EXPECT_EQ(raised([&] { write(u"Other", InvokeKind::PropertyPutRef, {5}); }).number, 13);
}

TEST_F(Invoke, AnObjectStandsForItsDefaultMember) {
    const Ref<Object> document = make<TestBed>();
    EXPECT_EQ(failure(u"Typed", document, 1, 1, true, u""), 449); // its default member wants an argument
}

TEST_F(Invoke, WritesByReferenceArgumentsBackIntoTheCallersValues) {
    std::vector<Variant> arguments{21, u"a", Variant()};
    write(u"Change", InvokeKind::Method, arguments);
    EXPECT_EQ(arguments[0], Variant(21)) << "the caller's own vector was copied for this call";

    callMember(bed, u"Change", InvokeKind::Method, arguments);
    EXPECT_EQ(arguments[0], Variant(42));
    EXPECT_EQ(arguments[1], Variant(u"a!"));
    EXPECT_EQ(arguments[2], Variant(Array::ofStrings({u"a!"})));

    std::vector<Variant> texts{u"4", 5, null};
    callMember(bed, u"Change", InvokeKind::Method, texts);
    EXPECT_EQ(texts[0], Variant(8)) << "a coerced argument comes back in the parameter's type";
    EXPECT_EQ(texts[1], Variant(u"5!"));

    Variant number = 1, text = u"n", any;
    named(u"Change", {}, {{u"VANY", &any}, {u"sText", &text}, {u"lnumber", &number}});
    EXPECT_EQ(number, Variant(2));
    EXPECT_EQ(text, Variant(u"n!"));
}

TEST_F(Invoke, SharedTextsStayAsTheyAreWhenOneIsWritten) {
    const Variant before = u"shared";
    std::vector<Variant> arguments{1, before, Variant()};
    callMember(bed, u"Change", InvokeKind::Method, arguments);
    EXPECT_EQ(before, Variant(u"shared"));
}

TEST_F(Invoke, GivesLeftOutArgumentsTheirStandard) {
    EXPECT_EQ(toText(run(u"Optionals")), u"a=7;b=,;c=missing;d=none");
    EXPECT_EQ(toText(run(u"Optionals", missing, u"x", missing, 3)), u"a=7;b=x;c=missing;d=3");
    EXPECT_EQ(toText(run(u"Optionals", Variant(), Variant(), 5)), u"a=0;b=;c=5;d=none");
    Variant c = 1, d = 2;
    EXPECT_EQ(toText(named(u"Optionals", {9}, {{u"LD", &d}, {u"vc", &c}})), u"a=9;b=,;c=1;d=2");
}

TEST_F(Invoke, RefusesArgumentsThatDoNotFit) {
    EXPECT_EQ(failure(u"Echo"), 449);
    EXPECT_EQ(failure(u"Echo", missing), 449);
    EXPECT_EQ(failure(u"Echo", 1, 2), 450);
    EXPECT_EQ(failure(u"Number", 1), 450);
    EXPECT_EQ(failure(u"Typed", 1, 2, 3, true), 449);
    Variant value = 1;
    EXPECT_EQ(raised([&] { named(u"Echo", {}, {{u"vOther", &value}}); }).number, 448);
    EXPECT_EQ(raised([&] { named(u"Echo", {1}, {{u"vValue", &value}}); }).number, 450);
    EXPECT_EQ(raised([&] { named(u"Echo", {}, {{u"vValue", &value}, {u"VVALUE", &value}}); }).number, 450);
    EXPECT_EQ(raised([&] {
                  std::vector<Variant> many(200, Variant(1));
                  callMember(bed, u"Optionals", InvokeKind::Method, many);
              }).number,
              450);
}

TEST_F(Invoke, ReadsAndWritesPropertiesByWhateverWayThereIs) {
    write(u"Number", InvokeKind::PropertyPut, {u"17"});
    EXPECT_EQ(run(u"Number"), Variant(17));
    write(u"Other", InvokeKind::PropertyPut, {bed});
    EXPECT_EQ(run(u"Other"), Variant(bed));
    write(u"Other", InvokeKind::PropertyPut, {nullptr}); // and breaks the circle
    EXPECT_EQ(raised([&] { write(u"Count", InvokeKind::PropertyPut, {1}); }).number, 438);
    EXPECT_EQ(raised([&] { write(u"Echo", InvokeKind::PropertyGet, {1}); }).number, 438);
    EXPECT_EQ(raised([&] { write(u"Number", InvokeKind::Method, {}); }).number, 438);
}

TEST_F(Invoke, WritesPropertiesWithParametersValueLast) {
    write(u"Item", InvokeKind::PropertyPut, {1, u"first"});
    write(u"Item", InvokeKind::PropertyPut, {2, 2.5});
    EXPECT_EQ(run(u"Item", 1), Variant(u"first"));
    EXPECT_EQ(run(u"Count"), Variant(2));
    EXPECT_EQ(failure(u"Item", 3), 9);
    EXPECT_EQ(raised([&] { write(u"Item", InvokeKind::PropertyPut, {1}); }).number, 449);
}

TEST_F(Invoke, ArgumentsOfAnObjectPropertyGoToItsDefaultMember) {
    EXPECT_EQ(failure(u"Other", 1), 91);
    const auto other = make<TestBed>();
    other->SetItem(1, u"inside");
    write(u"Other", InvokeKind::PropertyPutRef, {Variant(other)});
    EXPECT_EQ(run(u"Other", 1), Variant(u"inside"));
}

TEST_F(Invoke, RecordsTravelAsAWholeAndOnlyAsThemselves) {
    const Variant given = TypeTraits<TestRecord>::to({u"1", u"2"});
    EXPECT_EQ(TypeTraits<TestRecord>::from(run(u"Record", given)).sFirst, u"2");
    EXPECT_EQ(failure(u"Record", u"text"), 13);
}

TEST_F(Invoke, EnumeratesObjectsThatHaveAnEnumerator) {
    write(u"Item", InvokeKind::PropertyPut, {1, 10});
    write(u"Item", InvokeKind::PropertyPut, {2, 20});
    std::int32_t sum = 0;
    const auto members = enumerate(bed);
    for (Variant item; members->next(item);)
        sum += toLong(item);
    EXPECT_EQ(sum, 30);
    EXPECT_EQ(raised([&] { enumerate(nullptr); }).number, 91);
    EXPECT_EQ(raised([&] { enumerate(members); }).number, 451);
}

TEST_F(Invoke, FailuresArriveAsTheyWereRaised) {
    EXPECT_EQ(raised([&] { run(u"Fail", -2147209996, u"A.B", u"what\r\nand more"); }),
              (Raised{-2147209996, "A.B", "what\r\nand more"}));
}

class Sink final : public Object {
  public:
    explicit Sink(std::int32_t failure = 0) : failure_(failure) {}
    std::vector<String> heard;
    Variant invoke(DispatchId member, InvokeKind, const Arguments& arguments) override {
        if (failure_)
            throw Error(failure_, u"", u"");
        EXPECT_EQ(member, 1);
        heard.push_back(toText(arguments.positional[0]));
        arguments.positional[0] = concat(heard.back(), u"+");
        return {};
    }

  private:
    std::int32_t failure_;
};

TEST(Events, ReachEverySinkUntilItIsDisconnected) {
    const auto bed = make<TestBed>();
    const auto first = make<Sink>(), second = make<Sink>();
    EXPECT_EQ(bed->Tell(u"nobody"), u"nobody");
    const auto connection = bed->connect(first);
    bed->connect(make<Sink>(438)); // knows no such event
    bed->connect(second);
    EXPECT_EQ(bed->Tell(u"a"), u"a++");
    bed->disconnect(connection);
    EXPECT_EQ(bed->Tell(u"b"), u"b+");
    EXPECT_EQ(first->heard.size(), 1u);
    EXPECT_EQ(second->heard, (std::vector<String>{u"a+", u"b"}));
    EXPECT_EQ(raised([&] { bed->disconnect(connection); }).number, 5);
    bed->connect(make<Sink>(11));
    EXPECT_EQ(raised([&] { bed->Tell(u"c"); }).number, 11);
}

} // namespace
} // namespace vlgs::test
