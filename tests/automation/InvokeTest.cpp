// SPDX-License-Identifier: MIT
// Late-bound calls: how names, arguments and kinds find their member, and what goes wrong when they do not.
#include "automation/LateBound.h"
#include "support/LateBoundCases.h"
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
        return errorOf([&] { run(name, values...); });
    }
    Variant write(const char16_t* name, InvokeKind kind, std::vector<Variant> arguments) {
        return callMember(bed, name, kind, {arguments});
    }
    Variant named(const char16_t* name, std::vector<Variant> positional,
                  std::vector<NamedArgument> arguments) {
        return bed->invoke(bed->idOf(name), InvokeKind::MethodOrGet, {positional, arguments});
    }
};

TEST_F(Invoke, EveryCallComesOutAsOnEveryFace) {
    checkLateBoundCalls([](const Ref<Object>& target, const LateBoundCall& asked) {
        LateBoundOutcome outcome{.arguments = asked.positional};
        for (const auto& [name, value] : asked.named)
            outcome.arguments.push_back(value);
        std::vector<NamedArgument> named;
        for (std::size_t i = 0; i < asked.named.size(); ++i)
            named.push_back({asked.named[i].first, &outcome.arguments[asked.positional.size() + i]});
        try {
            outcome.result =
                target->invoke(target->idOf(asked.member), asked.kind,
                               {std::span(outcome.arguments).first(asked.positional.size()), named});
        } catch (const Error& error) {
            outcome.error = error.number();
            outcome.description = error.description().toUtf8();
        }
        return outcome;
    });
}

TEST_F(Invoke, MistypedNamesGetTheNearestOneTold) {
    const auto told = [&](const char16_t* name) { return raised([&] { run(name); }).description; };
    EXPECT_EQ(told(u"Ekho"),
              "Object doesn't support this property or method: TestBed.Ekho; did you mean Echo?");
    EXPECT_EQ(told(u"NUMEBR"),
              "Object doesn't support this property or method: TestBed.NUMEBR; did you mean Number?");
    EXPECT_EQ(told(u"Xyz"), "Object doesn't support this property or method: TestBed.Xyz");
    Variant value = 1;
    EXPECT_EQ(raised([&] {
                  named(u"Echo", {}, {{u"vValeu", &value}});
              }).description,
              "Named argument not found: vValeu of TestBed.Echo; did you mean vValue?");
}

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
        EXPECT_EQ(errorOf([&] { bed->invoke(id, InvokeKind::MethodOrGet, {}); }), 438) << id;
}

TEST_F(Invoke, AnObjectStandsForItsDefaultMember) {
    const Ref<Object> document = make<TestBed>();
    EXPECT_EQ(failure(u"Typed", document, 1, 1, true, u""), 449); // its default member wants an argument
}

TEST_F(Invoke, SharedTextsStayAsTheyAreWhenOneIsWritten) {
    const Variant before = u"shared";
    std::vector<Variant> arguments{1, before, Variant()};
    callMember(bed, u"Change", InvokeKind::Method, {arguments});
    EXPECT_EQ(before, Variant(u"shared"));
}

TEST_F(Invoke, WritesPropertiesThatAreReadBack) {
    write(u"Number", InvokeKind::PropertyPut, {u"17"});
    EXPECT_EQ(run(u"Number"), Variant(17));
    write(u"Other", InvokeKind::PropertyPut, {bed});
    EXPECT_EQ(run(u"Other"), Variant(bed));
    write(u"Other", InvokeKind::PropertyPut, {nullptr}); // and breaks the circle
    write(u"Item", InvokeKind::PropertyPut, {1, u"first"});
    write(u"Item", InvokeKind::PropertyPut, {2, 2.5});
    EXPECT_EQ(run(u"Item", 1), Variant(u"first"));
    EXPECT_EQ(run(u"Count"), Variant(2));
    EXPECT_EQ(errorOf([&] { write(u"Number", InvokeKind::Method, {}); }), 438);
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
    EXPECT_EQ(errorOf([&] { enumerate(nullptr); }), 91);
    EXPECT_EQ(errorOf([&] { enumerate(members); }), 451);
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
    EXPECT_EQ(errorOf([&] { bed->disconnect(connection); }), 5);
    bed->connect(make<Sink>(11));
    EXPECT_EQ(errorOf([&] { bed->Tell(u"c"); }), 11);
}

} // namespace
} // namespace vlgs::test
