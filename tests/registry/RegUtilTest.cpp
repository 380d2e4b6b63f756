// SPDX-License-Identifier: MIT
#include "registry/RegUtil.h"
#include "platform/Registry.h"

#include "automation/Array.h"
#include "automation/LateBound.h"
#include "ini/Collection.h"
#include "platform/Scratch.h"

#include <gtest/gtest.h>
#include <vector>

namespace vlgs::test {
namespace {

/// A caller's collection that raises its failures, as the run time's own does.
class Raising final : public Object {
  public:
    DispatchId idOf(std::u16string_view name) const override { return name == u"Add" ? 1 : unknownMember; }
    Variant invoke(DispatchId, InvokeKind, const Arguments& arguments) override {
        keys.push_back(arguments.positional[1].text());
        if (keys.size() == 2)
            raise(RunTimeError::KeyAlreadyPresent);
        return {};
    }
    std::vector<String> keys;
};

class RegUtilTest : public testing::Test {
  protected:
    RegUtilTest() {
        ::setenv("VLGS_REGISTRY", scratch_.folder().c_str(), 1);
        reg->SetCurrHive(eHiveCurrUser);
        EXPECT_TRUE(reg->AddKey(u"Soft\\Own", true));
    }
    ~RegUtilTest() override { ::unsetenv("VLGS_REGISTRY"); }

    static Ref<RegValue> record(std::u16string_view name, std::int32_t type = 0, const Variant& value = {}) {
        auto result = make<RegValue>();
        result->SetValueName(name);
        result->SetDataType(static_cast<enumRegDataType>(type));
        result->SetValue(value);
        return result;
    }
    Variant read(std::u16string_view name) {
        const auto value = record(name);
        EXPECT_TRUE(reg->GetValue(value)) << String(name).toUtf8();
        return value->Value();
    }
    static std::vector<String> texts(const Ref<Collection>& collection) {
        std::vector<String> result;
        for (std::int32_t i = 1; i <= collection->Count(); ++i)
            result.push_back(collection->Item(i).text());
        return result;
    }

    Scratch scratch_;
    Ref<RegUtil> reg = make<RegUtil>();
    Ref<Collection> found = make<Collection>();
};

TEST_F(RegUtilTest, MovesThroughTheTree) {
    const auto fresh = make<RegUtil>();
    EXPECT_EQ(fresh->CurrHive(), eHiveClassesRoot);
    EXPECT_EQ(fresh->CurrPath(), u"");
    EXPECT_EQ(fresh->LastErrorValue(), eVBErr);
    EXPECT_EQ(reg->CurrPath(), u"Soft\\Own");
    EXPECT_FALSE(reg->SetCurrPath(u"None"));
    EXPECT_EQ(reg->LastErrorValue(), 2);
    EXPECT_FALSE(reg->DropToSubKey(u"None"));
    EXPECT_EQ(reg->CurrPath(), u"Soft\\Own");
    EXPECT_TRUE(reg->RiseToParentKey());
    EXPECT_EQ(reg->CurrPath(), u"Soft");
    EXPECT_FALSE(reg->RiseToParentKey());
    EXPECT_EQ(reg->CurrPath(), u"Soft");
    EXPECT_TRUE(reg->SetCurrPath(u""));
    EXPECT_FALSE(reg->RiseToParentKey());
    EXPECT_TRUE(reg->DropToSubKey(u"SOFT"));
    EXPECT_EQ(reg->CurrPath(), u"SOFT");
    auto access = eReadControl;
    EXPECT_TRUE(reg->SetCurrPathWithAccess(u"Soft\\Own", access));
    EXPECT_TRUE(reg->EnumPath(found));
    EXPECT_EQ(texts(found), (std::vector<String>{u"Soft", u"Own"}));
    EXPECT_EQ(found->Item(u"2").text(), u"Own");
    EXPECT_EQ(reg->LastErrorValue(), 2) << "a success leaves it";
    EXPECT_TRUE(reg->SetCurrHive(static_cast<enumHives>(7)));
    EXPECT_EQ(reg->CurrHive(), 7);
    EXPECT_FALSE(reg->SetCurrPath(u""));
    EXPECT_EQ(reg->LastErrorValue(), 6);
}

TEST_F(RegUtilTest, ChecksArgumentsBeforeItOpensAnything) {
    reg->SetCurrPath(u"");
    ASSERT_TRUE(reg->DropToSubKey(u"Soft") && reg->DeleteKey(u"Own") && reg->SetCurrPath(u""));
    ASSERT_TRUE(reg->AddKey(u"Gone", true));
    const auto other = make<RegUtil>();
    other->SetCurrHive(eHiveCurrUser);
    ASSERT_TRUE(other->DeleteKey(u"Gone"));
    struct Case {
        const char* what;
        bool (*act)(RegUtil&, const Ref<Collection>&);
        std::int32_t reason;
    };
    const Case cases[] = {
        {"GetValue null", [](RegUtil& r, const auto&) { return r.GetValue(nullptr); }, 19},
        {"GetValue blank", [](RegUtil& r, const auto&) { return r.GetValue(record(u"  ")); }, 21},
        {"GetValue", [](RegUtil& r, const auto&) { return r.GetValue(record(u"v")); }, 2},
        {"Add null", [](RegUtil& r, const auto&) { return r.AddOrUpdateValue(nullptr); }, 19},
        {"Add blank", [](RegUtil& r, const auto&) { return r.AddOrUpdateValue(record(u"", 1, u"x")); }, 21},
        {"Add unfit", [](RegUtil& r, const auto&) { return r.AddOrUpdateValue(record(u"v", 4, u"x")); }, 13},
        {"Add", [](RegUtil& r, const auto&) { return r.AddOrUpdateValue(record(u"v", 1, u"x")); }, 2},
        {"Delete null", [](RegUtil& r, const auto&) { return r.DeleteValue(nullptr); }, 19},
        {"Delete blank", [](RegUtil& r, const auto&) { return r.DeleteValue(record(u" ")); }, 21},
        {"EnumValues null", [](RegUtil& r, const auto&) { return r.EnumValues(nullptr); }, 18},
        {"EnumValues", [](RegUtil& r, const auto& c) { return r.EnumValues(c); }, 2},
        {"EnumKeys null", [](RegUtil& r, const auto&) { return r.EnumKeys(nullptr); }, 18},
        {"EnumKeys", [](RegUtil& r, const auto& c) { return r.EnumKeys(c); }, 2},
        {"EnumPath null", [](RegUtil& r, const auto&) { return r.EnumPath(nullptr); }, 18},
        {"AddKey blank", [](RegUtil& r, const auto&) { return r.AddKey(u" "); }, 20},
        {"AddKey", [](RegUtil& r, const auto&) { return r.AddKey(u"k"); }, 2},
        {"DeleteKey blank", [](RegUtil& r, const auto&) { return r.DeleteKey(u""); }, 20},
        {"DropToSubKey blank", [](RegUtil& r, const auto&) { return r.DropToSubKey(u""); }, 20},
        {"Rename blank", [](RegUtil& r, const auto&) { return r.RenameValue(u" ", u"n"); }, 21},
        {"Rename to blank", [](RegUtil& r, const auto&) { return r.RenameValue(u"n", u""); }, 21},
        {"Rename", [](RegUtil& r, const auto&) { return r.RenameValue(u"n", u"m"); }, 2},
    };
    for (const auto& [what, act, reason] : cases) {
        EXPECT_FALSE(act(*reg, found)) << what;
        EXPECT_EQ(reg->LastErrorValue(), reason) << what;
    }
    EXPECT_EQ(found->Count(), 0);
}

TEST_F(RegUtilTest, StoresAndReadsTheTypes) {
    const auto bytes = [](std::vector<std::uint8_t> values) {
        return Variant(Array::ofBytes(std::move(values)));
    };
    const std::u16string_view parts(u"a\0b", 3);
    struct Case {
        std::int32_t type;
        Variant stored;
        Variant read;
        Variant enumerated;
    };
    const Case cases[] = {
        {1, u"text", u"text", u"text"},
        {1, Variant(parts), u"a", u"a"},
        {1, Variant(), u"", u""},
        {1, 5, u"5", u"5"},
        {2, u"%PATH%", u"%PATH%", u"%PATH%"},
        {7, Variant(parts), Variant(parts), Variant(parts)},
        {7, Variant(Array::ofStrings({u"a", u"b"})), Variant(parts), Variant(parts)},
        {7, u"", u"", u""},
        {4, 4294967295.0, -1, -1},
        {4, -2147483647 - 1, -2147483647 - 1, -2147483647 - 1},
        {4, u"258", 258, 258},
        {5, 258, 258, 258},
        {3, bytes({1, 2, 0x0F}), bytes({1, 2, 0x0F}), u"0F0201"},
        {3, Variant(Array::ofVariants({1, 255})), bytes({1, 255}), u"FF01"},
        {3, u"ab", bytes({'a', 'b'}), u"6261"},
        {3, Variant(), bytes({}), u""},
        {8, bytes({7}), bytes({7}), bytes({7})},
        {11, 1.5, bytes({0, 0, 0, 0, 0, 0, 0xF8, 0x3F}), bytes({0, 0, 0, 0, 0, 0, 0xF8, 0x3F})},
    };
    for (const auto& [type, stored, read, enumerated] : cases) {
        ASSERT_TRUE(reg->AddOrUpdateValue(record(u"v", type, stored))) << type;
        const auto value = record(u"V");
        ASSERT_TRUE(reg->GetValue(value));
        EXPECT_EQ(value->DataType(), type);
        EXPECT_EQ(value->Value(), read) << type;
        found = make<Collection>();
        ASSERT_TRUE(reg->EnumValues(found));
        ASSERT_EQ(found->Count(), 1);
        const auto listed = found->Item(u"v").reference();
        EXPECT_EQ(call(listed, u"Value"), enumerated) << type;
        EXPECT_EQ(call(listed, u"DataType"), Variant(type));
        EXPECT_EQ(call(listed, u"ValueName").text(), u"v");
    }
}

TEST_F(RegUtilTest, RefusesWhatATypeCannotHold) {
    const Variant list = Array::ofBytes({1});
    const std::pair<std::int32_t, Variant> cases[] = {
        {1, null},
        {1, list},
        {1, Variant(make<RegValue>())},
        {2, missing},
        {4, u"abc"},
        {4, 4294967296.0},
        {4, -2147483649.0},
        {4, list},
        {3, null},
        {3, Variant(Array::ofVariants({256}))},
        {3, Variant(Array::ofStrings({u"a", u"\x4E00"}))},
        {3, Variant(make<RegValue>())},
        {7, Variant(Array::ofStrings({u"a", u"", u"b"}))},
    };
    ASSERT_TRUE(reg->AddOrUpdateValue(record(u"v", 1, u"kept")));
    for (const auto& [type, value] : cases) {
        reg->DeleteKey(u"none");
        EXPECT_FALSE(reg->AddOrUpdateValue(record(u"v", type, value))) << type;
        EXPECT_EQ(reg->LastErrorValue(), 13) << type;
    }
    EXPECT_EQ(read(u"v"), Variant(u"kept"));
}

TEST_F(RegUtilTest, LongDataDoesNotFitTheBuffer) {
    ASSERT_TRUE(reg->AddOrUpdateValue(record(u"short", 1, String(1023, u'x'))));
    ASSERT_TRUE(reg->AddOrUpdateValue(record(u"long", 1, String(1024, u'x'))));
    ASSERT_TRUE(reg->AddOrUpdateValue(record(String(1024, u'n'), 1, u"x")));
    ASSERT_TRUE(reg->AddOrUpdateValue(record(u"last", 1, u"x")));
    EXPECT_EQ(read(u"short"), Variant(String(1023, u'x')));
    const auto value = record(u"long", 3, u"as it was");
    EXPECT_FALSE(reg->GetValue(value));
    EXPECT_EQ(reg->LastErrorValue(), 234);
    EXPECT_EQ(value->DataType(), eBinary);
    EXPECT_EQ(value->Value(), Variant(u"as it was"));
    EXPECT_FALSE(reg->EnumValues(found));
    EXPECT_EQ(found->Count(), 2);
    EXPECT_TRUE(found->IsPresent(u"short") && found->IsPresent(u"last"));
    EXPECT_TRUE(reg->RenameValue(u"long", u"LAST"));
    EXPECT_TRUE(reg->DeleteValue(record(u"short")));
    EXPECT_FALSE(reg->DeleteValue(record(u"short")));
    EXPECT_EQ(reg->LastErrorValue(), 2);
    found = make<Collection>();
    EXPECT_FALSE(reg->EnumValues(found));
    EXPECT_EQ(found->Count(), 0) << "one is left, and that is too long";
}

TEST_F(RegUtilTest, KeysAreMadeListedAndDeleted) {
    EXPECT_TRUE(reg->AddKey(u"One\\Two"));
    EXPECT_TRUE(reg->AddKey(u"Three"));
    EXPECT_EQ(reg->CurrPath(), u"Soft\\Own");
    EXPECT_TRUE(reg->EnumKeys(found));
    EXPECT_EQ(texts(found), (std::vector<String>{u"One", u"Three"}));
    EXPECT_TRUE(found->IsPresent(u"THREE"));
    EXPECT_EQ(reg->LastErrorValue(), 0) << "the end of a list is no failure";
    EXPECT_FALSE(reg->DeleteKey(u"One"));
    EXPECT_EQ(reg->LastErrorValue(), 5);
    EXPECT_TRUE(reg->DeleteKey(u"One\\Two"));
    EXPECT_FALSE(reg->AddKey(String(256, u'k'), true));
    EXPECT_EQ(reg->LastErrorValue(), 87);
}

TEST_F(RegUtilTest, ACollectionsFailureIsTheLastError) {
    for (const auto* name : {u"a", u"b", u"c"})
        ASSERT_TRUE(reg->AddKey(name));
    ASSERT_EQ(found->Add(u"x", u"B"), 0);
    EXPECT_FALSE(reg->EnumKeys(found));
    EXPECT_EQ(reg->LastErrorValue(), 457);
    EXPECT_EQ(found->Count(), 2);
    reg->DeleteKey(u"none");
    const auto raising = make<Raising>();
    EXPECT_FALSE(reg->EnumKeys(raising));
    EXPECT_EQ(reg->LastErrorValue(), 457);
    EXPECT_EQ(raising->keys, (std::vector<String>{u"a", u"b"}));
    EXPECT_FALSE(reg->EnumPath(make<RegValue>()));
    EXPECT_EQ(reg->LastErrorValue(), 438);
}

TEST_F(RegUtilTest, APathEndsBeforeItsNul) {
    ASSERT_TRUE(reg->AddKey(u"Sub"));
    const auto path = reg->CurrPath();
    ASSERT_TRUE(reg->DropToSubKey(String(std::u16string_view(u"Sub\0x\\y", 7))));
    EXPECT_EQ(reg->CurrPath(), concat(path, u"\\Sub"));
    ASSERT_TRUE(reg->RiseToParentKey());
    EXPECT_EQ(reg->CurrPath(), path);
}

TEST_F(RegUtilTest, TheDefaultValueIsListedOnly) {
    RegistryKey key;
    ASSERT_EQ(RegistryKey(RegistryHive::CurrentUser).open(u"Soft\\Own", 0x2003F, key),
              RegistryStatus::Success);
    ASSERT_EQ(key.set(u"", {registryType::text, registryBytes(u"x")}), RegistryStatus::Success);
    EXPECT_TRUE(reg->EnumValues(found));
    ASSERT_EQ(found->Count(), 1);
    EXPECT_EQ(call(found->Item(u"").reference(), u"Value"), Variant(u"x"));
    EXPECT_FALSE(reg->GetValue(record(u"")));
}

} // namespace
} // namespace vlgs::test
