// SPDX-License-Identifier: MIT
// The ordered keyed store from 10^3 to 10^6 members: time per operation in random places. An operation that
// is logarithmic or better stays within a small multiple from the smallest to the largest store. Beside it
// what keeps an order and finds keys without positions and without folding case: a list and an unordered map.
#include "automation/OrderedStore.h"
#include "base/Text.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <list>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vlgs {
namespace {

std::vector<std::int32_t> shuffled(std::int64_t count, std::mt19937& random) {
    std::vector<std::int32_t> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    std::shuffle(numbers.begin(), numbers.end(), random);
    return numbers;
}

String keyOf(std::int32_t number) {
    return concat(u"Setting number ", decimal(number));
}

// A store with texts for its keys, and the same keys once more in random order.
struct Subject {
    explicit Subject(std::int64_t members) : random(4711) {
        for (std::int32_t i = 0; i < members; ++i)
            keys.push_back(keyOf(i));
        for (const auto number : shuffled(members, random))
            drawn.push_back(keyOf(number));
        fill();
    }
    void fill() {
        store = make<OrderedStore>();
        for (std::size_t i = 0; i < keys.size(); ++i)
            store->add(static_cast<std::int32_t>(i), keys[i]);
    }
    // Puts the order into the shape that it has after many changes.
    void scatter() {
        for (std::size_t i = 0; i < drawn.size() / 2; ++i) {
            store->remove(drawn[i]);
            store->add(1, drawn[i].text(), position());
        }
    }
    std::int32_t position() {
        return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(store->count())) + 1;
    }
    const Variant& nextKey() {
        if (next == drawn.size())
            next = 0;
        return drawn[next++];
    }

    std::mt19937 random;
    std::vector<String> keys;
    std::vector<Variant> drawn;
    std::size_t next = 0;
    Ref<OrderedStore> store;
};

void Append(benchmark::State& state) {
    Subject subject(state.range(0));
    for (auto _ : state)
        subject.fill();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Half as many members as there are go in between them, in each round.
template <class Insert>
void insertEach(benchmark::State& state, Insert insert) {
    Subject subject(state.range(0));
    std::vector<String> more;
    for (std::size_t i = 0; i < subject.keys.size(); i += 2)
        more.push_back(concat(subject.keys[i], u" again"));
    for (auto _ : state) {
        state.PauseTiming();
        subject.fill();
        state.ResumeTiming();
        for (const String& key : more)
            insert(subject, key);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(more.size()));
}

void InsertBeforePosition(benchmark::State& state) {
    insertEach(state,
               [](Subject& subject, const String& key) { subject.store->add(1, key, subject.position()); });
}

void InsertBeforeKey(benchmark::State& state) {
    insertEach(state,
               [](Subject& subject, const String& key) { subject.store->add(1, key, subject.nextKey()); });
}

void ReadPosition(benchmark::State& state) {
    Subject subject(state.range(0));
    if (state.range(1))
        subject.scatter();
    for (auto _ : state)
        benchmark::DoNotOptimize(subject.store->at(subject.position())->number());
}

void ReadKey(benchmark::State& state) {
    Subject subject(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(subject.store->read(subject.nextKey()).member->number());
}

void Enumerate(benchmark::State& state) {
    Subject subject(state.range(0));
    subject.scatter();
    Variant item;
    for (auto _ : state)
        for (const auto enumerator = subject.store->enumerate(); enumerator->next(item);)
            benchmark::DoNotOptimize(item);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Remove>
void removeEach(benchmark::State& state, Remove remove) {
    Subject subject(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        subject.fill();
        state.ResumeTiming();
        for (const Variant& key : subject.drawn)
            remove(subject, key);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

class ListAndMap {
  public:
    void add(Variant item, std::u16string_view key) {
        members_.push_back({std::move(item), std::u16string(key)});
        places_.emplace(members_.back().key, std::prev(members_.end()));
    }
    const Variant& read(std::u16string_view key) const { return places_.find(key)->second->item; }
    void remove(std::u16string_view key) {
        const auto place = places_.find(key);
        const auto member = place->second;
        places_.erase(place);
        members_.erase(member);
    }

  private:
    struct Member {
        Variant item;
        std::u16string key;
    };
    std::list<Member> members_;
    std::unordered_map<std::u16string_view, std::list<Member>::iterator> places_;
};

ListAndMap listAndMapOf(const Subject& subject) {
    ListAndMap members;
    for (std::size_t i = 0; i < subject.keys.size(); ++i)
        members.add(static_cast<std::int32_t>(i), subject.keys[i]);
    return members;
}

void AppendToListAndMap(benchmark::State& state) {
    const Subject subject(state.range(0));
    for (auto _ : state) {
        auto members = listAndMapOf(subject);
        benchmark::DoNotOptimize(members);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ReadKeyOfListAndMap(benchmark::State& state) {
    Subject subject(state.range(0));
    const auto members = listAndMapOf(subject);
    for (auto _ : state)
        benchmark::DoNotOptimize(members.read(subject.nextKey().text()).number());
}

void RemoveKeyOfListAndMap(benchmark::State& state) {
    const Subject subject(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto members = listAndMapOf(subject);
        state.ResumeTiming();
        for (const Variant& key : subject.drawn)
            members.remove(key.text());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void RemovePosition(benchmark::State& state) {
    removeEach(state, [](Subject& subject, const Variant&) { subject.store->remove(subject.position()); });
}

void RemoveKey(benchmark::State& state) {
    removeEach(state, [](Subject& subject, const Variant& key) { subject.store->remove(key); });
}

void sizes(benchmark::internal::Benchmark* run) {
    run->RangeMultiplier(10)->Range(1'000, 1'000'000);
}
void sizesAndOrders(benchmark::internal::Benchmark* run) {
    run->ArgNames({"members", "scattered"})->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}});
}

BENCHMARK(Append)->Apply(sizes);
BENCHMARK(AppendToListAndMap)->Apply(sizes);
BENCHMARK(InsertBeforePosition)->Apply(sizes);
BENCHMARK(InsertBeforeKey)->Apply(sizes);
BENCHMARK(ReadPosition)->Apply(sizesAndOrders);
BENCHMARK(ReadKey)->Apply(sizes);
BENCHMARK(ReadKeyOfListAndMap)->Apply(sizes);
BENCHMARK(Enumerate)->Apply(sizes);
BENCHMARK(RemovePosition)->Apply(sizes);
BENCHMARK(RemoveKey)->Apply(sizes);
BENCHMARK(RemoveKeyOfListAndMap)->Apply(sizes);

} // namespace
} // namespace vlgs
