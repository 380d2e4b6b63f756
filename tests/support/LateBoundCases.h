// SPDX-License-Identifier: MIT
// Late-bound calls and what becomes of them, the same on every face: InvokeTest makes them natively,
// CallsTest through the dispatch interfaces of COM.
#pragma once

#include "support/TestBed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace vlgs::test {

struct LateBoundCall {
    const char* target; // of `LateBoundTargets`
    const char16_t* member;
    InvokeKind kind = InvokeKind::MethodOrGet;
    std::vector<Variant> positional = {};
    std::vector<std::pair<const char16_t*, Variant>> named = {};
};

struct LateBoundOutcome {
    Variant result = {};
    std::int32_t error = 0;
    std::string description = {}; // of a call that raises
    /// Afterwards, positional ones first.
    std::vector<Variant> arguments = {};
};

/// A call and its outcome. `description` is what is expected behind the run time's own text; null stands for
/// a description that is not looked at. Arguments are compared where there are any in the outcome.
struct LateBoundCase {
    LateBoundCall call;
    Variant result = {};
    std::int32_t error = 0;
    const char* description = nullptr;
    std::vector<Variant> arguments = {};
};

/// "bed" has the item "first"; "other" has it as its Other; the holders hold what their names say.
class LateBoundTargets {
  public:
    LateBoundTargets() {
        bed_->SetItem(1, u"first");
        other_->SetOther(bed_);
        bedHolder_->SetValue(Variant(bed_));
        holderHolder_->SetValue(Variant(bedHolder_));
        nothingHolder_->SetValue(nullptr);
        numberHolder_->SetValue(5);
        itself_->SetValue(Variant(itself_));
        ring_->SetValue(Variant(ringEnd_));
        ringEnd_->SetValue(Variant(ring_));
    }
    ~LateBoundTargets() {
        itself_->SetValue(null);
        ring_->SetValue(null);
    }
    Ref<Object> operator[](std::string_view name) const {
        const std::pair<std::string_view, Ref<Object>> all[] = {
            {"bed", bed_},
            {"other", other_},
            {"fresh", make<TestBed>()},
            {"holder of bed", bedHolder_},
            {"holder of holder", holderHolder_},
            {"holder of nothing", nothingHolder_},
            {"holder of number", numberHolder_},
            {"holder of itself", itself_},
            {"ring", ring_},
        };
        return std::ranges::find(all, name, &std::pair<std::string_view, Ref<Object>>::first)->second;
    }

  private:
    Ref<TestBed> bed_ = make<TestBed>(), other_ = make<TestBed>();
    Ref<TestHolder> bedHolder_ = make<TestHolder>(), holderHolder_ = make<TestHolder>(),
                    nothingHolder_ = make<TestHolder>(), numberHolder_ = make<TestHolder>(),
                    itself_ = make<TestHolder>(), ring_ = make<TestHolder>(), ringEnd_ = make<TestHolder>();
};

inline std::vector<LateBoundCase> lateBoundCases() {
    constexpr auto put = InvokeKind::PropertyPut, putRef = InvokeKind::PropertyPutRef,
                   get = InvokeKind::PropertyGet, any = InvokeKind::MethodOrGet;
    const Variant list = Array::ofLongs({1}), none = nullptr;
    const auto typed = [](std::vector<Variant> arguments, const char16_t* result) {
        return LateBoundCase{{"bed", u"Typed", any, std::move(arguments)}, result};
    };
    const auto misfit = [](std::vector<Variant> arguments, std::int32_t error, const char* parameter) {
        return LateBoundCase{{"bed", u"Typed", any, std::move(arguments)}, {}, error, parameter};
    };
    return {
        // each argument is converted to its parameter's type
        typed({2, 3, 4.5, true, u"b"}, u"2,3,4.5,True,b"),
        typed({u"2", u"3", u"4.5", u"false", 7}, u"2,3,4.5,False,7"),
        typed({2.5, 3.5, true, 2, false}, u"2,4,-1,True,False"),
        typed({Variant(), Variant(), Variant(), Variant(), Variant()}, u"0,0,0,False,"),
        typed({true, Currency{15000}, std::uint8_t{9}, u"0", 1.5}, u"-1,2,9,False,1.5"),
        typed({-32768, u"-2147483648", u"1e3", -1, u""}, u"-32768,-2147483648,1000,True,"),
        misfit({32768, 1, 1, true, u""}, 6, ": iNumber of TestBed.Typed"),
        misfit({u"1e30", 1, 1, true, u""}, 6, ": iNumber of TestBed.Typed"),
        misfit({u"x", 1, 1, true, u""}, 13, ": iNumber of TestBed.Typed"),
        misfit({null, 1, 1, true, u""}, 94, ": iNumber of TestBed.Typed"),
        misfit({1, 1, 1, true, null}, 94, ": sText of TestBed.Typed"),
        misfit({1, 1, 1, true, none}, 91, ": sText of TestBed.Typed"),
        misfit({1, 1, 1, true, list}, 13, ": sText of TestBed.Typed"),
        misfit({1, 1, 1, true, Variant(ErrorValue{5})}, 13, ": sText of TestBed.Typed"),
        misfit({1, 1, list, true, u""}, 13, ": dNumber of TestBed.Typed"),
        {{"other", u"Other", putRef, {5}}, {}, 13, ": oOther of TestBed.Other"},

        // positional, named, left out
        {{"bed", u"ECHO", any, {1}}, 1},
        {{"bed", u"Optionals"}, u"a=7;b=,;c=missing;d=none"},
        {{"bed", u"optionals", any, {missing, u"x", missing, 3}}, u"a=7;b=x;c=missing;d=3"},
        {{"bed", u"Optionals", any, {Variant(), Variant(), 5}}, u"a=0;b=;c=5;d=none"},
        {{"bed", u"Optionals", any, {9}, {{u"LD", 2}, {u"vc", 1}}}, u"a=9;b=,;c=1;d=2"},
        {{"bed", u"Echo"}, {}, 449, ": vValue of TestBed.Echo"},
        {{"bed", u"Echo", any, {missing}}, {}, 449, ": vValue of TestBed.Echo"},
        {{"bed", u"Typed", any, {1, 2, 3, true}}, {}, 449, ": sText of TestBed.Typed"},
        {{"bed", u"Echo", any, {1, 2}}, {}, 450, ": TestBed.Echo takes 1, not 2"},
        {{"bed", u"Optionals", any, std::vector<Variant>(200, Variant(1))}, {}, 450, nullptr},
        {{"bed", u"Echo", any, {}, {{u"vOther", 1}}}, {}, 448, nullptr},
        {{"bed", u"Echo", any, {1}, {{u"vValue", 1}}}, {}, 450, ": vValue of TestBed.Echo is given twice"},
        {{"bed", u"Echo", any, {}, {{u"vValue", 1}, {u"VVALUE", 1}}}, {}, 450, nullptr},

        // properties: value last, read and written by whatever way there is
        {{"fresh", u"Number", put, {u"17"}}, {}},
        {{"fresh", u"Other", put, {none}}, {}},
        {{"fresh", u"Item", put, {1, u"a"}}, {}},
        {{"fresh", u"Item", put, {1}}, {}, 449, ": vIndex of TestBed.Item"},
        {{"fresh", u"Item", put, {2, u"a"}}, {}, 9, ""},
        {{"bed", u"Item", get, {1}}, u"first"},
        {{"bed", u"Count", put, {1}}, {}, 438, ": TestBed.Count is read-only"},
        {{"bed", u"Echo", put, {1}}, {}, 438, ": TestBed.Echo is a method"},
        {{"bed", u"Echo", get, {1}}, {}, 438, ": TestBed.Echo cannot be called that way"},
        {{"bed", u"Told"}, {}, 438, nullptr},
        {{"bed", u"Ech\u00f6"}, {}, 438, nullptr},

        // by reference, coerced or not, also when the member raises
        {{"bed", u"Change", any, {21, u"a", Variant()}},
         {},
         0,
         nullptr,
         {42, u"a!", Variant(Array::ofStrings({u"a!"}))}},
        {{"bed", u"Change", any, {u"4", 5, null}},
         {},
         0,
         nullptr,
         {8, u"5!", Variant(Array::ofStrings({u"5!"}))}},
        {{"bed", u"Change", any, {}, {{u"VANY", 1}, {u"sText", u"n"}, {u"lnumber", 1}}},
         {},
         0,
         nullptr,
         {Variant(Array::ofStrings({u"n!"})), u"n!", 2}},
        {{"bed", u"ChangeAndFail", any, {u"4", u"a"}}, {}, 76, "", {8, u"a!"}},
        {{"bed", u"Change", any, {1, null, 3}}, {}, 94, ": sText of TestBed.Change", {1, null, 3}},
        {{"bed", u"Echo", any, {u"kept"}}, u"kept", 0, nullptr, {u"kept"}},

        // arguments go on to default members, through objects and through Variants that hold one
        {{"other", u"Other", any, {1}}, u"first"},
        {{"other", u"Other", get, {1}}, u"first"},
        {{"fresh", u"Other", any, {1}}, {}, 91, ""},
        {{"bed", u"Number", any, {1}}, {}, 450, ": TestBed.Number takes 0, not 1"},
        {{"holder of bed", u"Value", any, {1}}, u"first"},
        {{"holder of bed", u"Value", any, {1, 2}}, {}, 450, ": TestBed.Item takes 1, not 2"},
        {{"holder of bed", u"Value", any, {2}}, {}, 9, ""},
        {{"holder of holder", u"Value", get, {1}}, u"first"},
        {{"holder of nothing", u"Value", any, {1}}, {}, 91, ""},
        {{"holder of number", u"Value", any, {1}}, {}, 450, ": TestHolder.Value takes 0, not 1"},
        {{"holder of itself", u"Value", any, {1}}, {}, 450, nullptr},
        {{"ring", u"Value", get, {1}}, {}, 450, nullptr},
        {{"bed", u"Typed", any, {1, 1, 1, true, u"", 7}}, {}, 450, ": TestBed.Typed takes 5, not 6"},
    };
}

/// Makes every call by `face` and compares what becomes of it.
inline void checkLateBoundCalls(
    const std::function<LateBoundOutcome(const Ref<Object>& target, const LateBoundCall&)>& face) {
    const LateBoundTargets targets;
    for (const auto& [call, result, error, description, arguments] : lateBoundCases()) {
        SCOPED_TRACE(std::string(call.target) + "." + String(call.member).toUtf8() + " #" +
                     std::to_string(call.positional.size() + call.named.size()));
        const LateBoundOutcome outcome = face(targets[call.target], call);
        EXPECT_EQ(outcome.error, error) << outcome.description;
        EXPECT_EQ(outcome.result, result);
        if (description && error) {
            EXPECT_EQ(outcome.description, Error::descriptionOf(error).toUtf8() + description);
        }
        if (!arguments.empty()) {
            EXPECT_EQ(outcome.arguments, arguments);
        }
    }
}

} // namespace vlgs::test
