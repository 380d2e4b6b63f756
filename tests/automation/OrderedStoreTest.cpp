// SPDX-License-Identifier: MIT
#include "automation/OrderedStore.h"

#include "base/CaseFold.h"
#include "base/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace vlgs {
namespace {

const String noText;

std::int32_t number(OrderedStore::Failure failure) {
    return failure ? static_cast<std::int32_t>(*failure) : 0;
}

// The store by the plainest means: what it must agree with.
class Model {
  public:
    struct Member {
        std::int32_t item;
        std::optional<String> key;
    };

    std::int32_t locate(const Variant& index, std::size_t& at) const {
        if (index.isString()) {
            for (at = 0; at < members.size(); ++at)
                if (members[at].key && equalIgnoringCase(*members[at].key, index.text()))
                    return 0;
            return 5;
        }
        at = static_cast<std::size_t>(index.number() - 1);
        return at < members.size() ? 0 : 9;
    }

    std::int32_t add(std::int32_t item, std::optional<String> key, const Variant& before,
                     const Variant& after) {
        std::size_t at = members.size();
        if (!before.isMissing() && !after.isMissing())
            return 5;
        if (!before.isMissing() || !after.isMissing()) {
            if (locate(before.isMissing() ? after : before, at) != 0)
                return 5;
            at += before.isMissing();
        }
        std::size_t other;
        if (key && locate(*key, other) == 0)
            return 457;
        members.insert(members.begin() + static_cast<std::ptrdiff_t>(at), {item, key});
        return 0;
    }

    std::int32_t remove(const Variant& index) {
        std::size_t at;
        if (const auto failure = locate(index, at))
            return failure;
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(at));
        return 0;
    }

    std::vector<Member> members;
};

void expectSame(const OrderedStore& store, const Model& model) {
    ASSERT_EQ(store.count(), static_cast<std::int32_t>(model.members.size()));
    const auto enumerator = store.enumerate();
    Variant item;
    for (std::int32_t i = 0; i < store.count(); ++i) {
        const auto& [number, key] = model.members[static_cast<std::size_t>(i)];
        ASSERT_EQ(store.at(i + 1)->number(), number) << "position " << i + 1;
        ASSERT_TRUE(enumerator->next(item) && item.number() == number);
        if (key) {
            ASSERT_NE(store.withKey(toUpper(*key)), nullptr) << key->toUtf8();
            ASSERT_EQ(store.withKey(toUpper(*key))->number(), number) << key->toUtf8();
        }
    }
    ASSERT_FALSE(enumerator->next(item));
}

// How a run of random changes is made up, in parts of 100.
struct Mix {
    const char* name;
    int additions;
    int inside; // of the additions: those before or after a member
    int keyed;  // of the additions
    int steps;
};

class RandomChanges : public testing::TestWithParam<Mix> {};

TEST_P(RandomChanges, AgreeWithThePlainModel) {
    const Mix& mix = GetParam();
    std::mt19937 random(20261);
    const auto under = [&](std::size_t limit) { return static_cast<std::int32_t>(random() % limit); };
    const auto chance = [&](int percent) { return under(100) < percent; };
    const auto index = [&](const Model& model) -> Variant {
        const auto size = model.members.size();
        if (size == 0 || chance(3))
            return chance(50) ? Variant(under(size + 3) - 1) : Variant(u"no such key");
        const auto& member = model.members[static_cast<std::size_t>(under(size))];
        return member.key && chance(50) ? Variant(toLower(*member.key)) : Variant(under(size) + 1);
    };
    const auto store = make<OrderedStore>();
    Model model;
    for (int step = 0; step < mix.steps; ++step) {
        // Towards the end more goes out than comes in.
        if (chance(step < mix.steps / 2 ? mix.additions : 100 - mix.additions)) {
            const Variant reference = index(model);
            const bool inside = chance(mix.inside);
            const bool before = chance(50);
            std::optional<String> key;
            if (chance(mix.keyed))
                key = chance(1) ? String() : concat(u"Key", decimal(under(100'000)));
            const Variant& beforeThis = inside && before ? reference : Variant(missing);
            const Variant& afterThis = inside && !before ? reference : Variant(missing);
            ASSERT_EQ(number(store->add(step, key, beforeThis, afterThis)),
                      model.add(step, key, beforeThis, afterThis));
        } else {
            const Variant gone = index(model);
            ASSERT_EQ(number(store->remove(gone)), model.remove(gone)) << step;
        }
        if (step % (mix.steps / 20) == 0) {
            ASSERT_NO_FATAL_FAILURE(expectSame(*store, model)) << step;
        }
    }
    expectSame(*store, model);
    while (store->count() > 0) {
        const Variant gone = under(model.members.size()) + 1;
        ASSERT_EQ(number(store->remove(gone)), model.remove(gone));
    }
    expectSame(*store, model);
}

INSTANTIATE_TEST_SUITE_P(OrderedStore, RandomChanges,
                         testing::Values(Mix{"Small", 52, 40, 70, 4'000}, Mix{"Large", 90, 80, 60, 12'000},
                                         Mix{"Unkeyed", 80, 50, 0, 6'000},
                                         Mix{"Appended", 95, 0, 100, 8'000}),
                         [](const auto& mix) { return mix.param.name; });

TEST(OrderedStore, GrowsAndShrinksThroughSeveralLevels) {
    constexpr std::int32_t count = 40'000;
    const auto store = make<OrderedStore>();
    for (std::int32_t i = 1; i <= count; ++i)
        ASSERT_EQ(number(store->add(i, {}, i == 1 ? Variant(missing) : Variant(1))), 0);
    for (std::int32_t i = 1; i <= count; i += 97)
        ASSERT_EQ(store->at(i)->number(), count + 1 - i);
    for (std::int32_t left = count; left > 1; --left)
        ASSERT_EQ(number(store->remove(left % 3 == 0 ? left / 2 + 1 : 1)), 0);
    EXPECT_EQ(store->count(), 1);
}

// Failures of places and keys that random changes meet as well are the model's.
TEST(OrderedStore, AnswersWithTheNumberOfTheFailure) {
    const auto store = make<OrderedStore>();
    ASSERT_EQ(number(store->add(1, u"Alpha")), 0);
    ASSERT_EQ(number(store->add(2, noText)), 0);
    ASSERT_EQ(number(store->add(3, {})), 0);
    EXPECT_EQ(number(store->add(4, noText)), 457);
    EXPECT_EQ(number(store->add(4, {}, 1, 2)), 5);
    EXPECT_EQ(number(store->add(4, {}, missing, 0)), 5);
    EXPECT_EQ(number(store->add(4, {}, missing, null)), 13);
    EXPECT_EQ(number(store->remove(Variant())), 13);
    EXPECT_EQ(store->count(), 3);
    EXPECT_EQ(store->withKey(noText)->number(), 2);
}

TEST(OrderedStore, IndexSelectsByItsType) {
    const auto store = make<OrderedStore>();
    store->add(u"one", u"2");
    store->add(u"two", u"b");
    store->add(u"three", {});
    struct Case {
        Variant index;
        const char16_t* member;
        std::int32_t failure;
    };
    const Case cases[] = {
        {std::int16_t{3}, u"three", 0},
        {std::uint8_t{1}, u"one", 0},
        {2.5, u"two", 0}, // halves go to the even neighbour
        {1.5f, u"two", 0},
        {0.5, nullptr, 9},
        {3.5, nullptr, 9},
        {1e300, nullptr, 9},
        {-1, nullptr, 9},
        {Currency{25'000}, u"two", 0},
        {Decimal{1, 0, 0, 14}, u"one", 0},
        {u"2", u"one", 0}, // a text is a key, digits too
        {u"B", u"two", 0},
        {u"", nullptr, 5},
        {true, nullptr, 9},
        {null, nullptr, 13},
        {missing, nullptr, 13},
        {Variant(), nullptr, 13},
        {Variant(nullptr), nullptr, 13},
    };
    for (const auto& [index, member, failure] : cases) {
        const auto reading = store->read(index);
        EXPECT_EQ(number(reading.failure), failure) << code(index.type());
        ASSERT_EQ(reading.member != nullptr, member != nullptr);
        if (member) {
            EXPECT_EQ(reading.member->text(), member);
        }
    }
}

TEST(OrderedStore, EnumerationSurvivesChanges) {
    const auto store = make<OrderedStore>();
    for (std::int32_t i = 1; i <= 5; ++i)
        store->add(i, {});
    auto enumerator = store->enumerate();
    Variant item;
    ASSERT_TRUE(enumerator->next(item));
    store->remove(1); // 2 3 4 5, of which the second comes next
    ASSERT_TRUE(enumerator->next(item));
    EXPECT_EQ(item.number(), 3);
    const auto second = enumerator->clone();
    store->clear();
    EXPECT_FALSE(enumerator->next(item));
    store->add(7, {});
    enumerator->reset();
    ASSERT_TRUE(enumerator->next(item));
    EXPECT_EQ(item.number(), 7);
    EXPECT_FALSE(second->next(item));
}

// A member whose end empties the store that held it.
class Emptying final : public Object {
  public:
    explicit Emptying(OrderedStore& store) : store_(store) {}
    ~Emptying() override {
        store_.clear();
        store_.add(1, u"last");
    }

  private:
    OrderedStore& store_;
};

TEST(OrderedStore, MemberMayChangeTheStoreAsItEnds) {
    const auto store = make<OrderedStore>();
    store->add(1, u"a");
    store->add(Variant(make<Emptying>(*store)), u"b");
    store->add(3, u"c");
    EXPECT_EQ(number(store->remove(2)), 0);
    EXPECT_EQ(store->count(), 1);
    store->add(Variant(make<Emptying>(*store)), u"b");
    store->clear();
    EXPECT_NE(store->withKey(u"LAST"), nullptr);
}

} // namespace
} // namespace vlgs
