// The ordered keyed store from 10^3 to 10^6 members: time per operation in random places. An operation that
// is logarithmic or better stays within a small multiple from the smallest to the largest store.
#include "automation/OrderedStore.h"
#include "automation/Text.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace vlgs {
namespace {

// A store and the keys of its members; keys to be added are made beforehand.
struct Subject {
    explicit Subject(std::int64_t members) : random(4711) {
        keys.reserve(static_cast<std::size_t>(members));
        for (std::int64_t i = 0; i < members; ++i)
            keys.push_back(concat(u"Setting number ", decimal(i)));
        fill();
    }
    void fill() {
        store = make<OrderedStore>();
        for (std::size_t i = 0; i < keys.size(); ++i)
            store->add(static_cast<std::int32_t>(i), keys[i]);
    }
    // Puts the order into the shape that it has after many changes.
    void scatter() {
        for (std::size_t i = 0; i < keys.size() / 2; ++i) {
            const String& key = anyKey();
            store->remove(key);
            store->add(1, key, position());
        }
    }
    std::int32_t position() {
        return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(store->count())) + 1;
    }
    const String& anyKey() { return keys[random() % keys.size()]; }

    std::mt19937 random;
    std::vector<String> keys;
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
               [](Subject& subject, const String& key) { subject.store->add(1, key, subject.anyKey()); });
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
        benchmark::DoNotOptimize(subject.store->withKey(subject.anyKey())->number());
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
    auto order = subject.keys;
    std::shuffle(order.begin(), order.end(), subject.random);
    for (auto _ : state) {
        state.PauseTiming();
        subject.fill();
        state.ResumeTiming();
        for (const String& key : order)
            remove(subject, key);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void RemovePosition(benchmark::State& state) {
    removeEach(state, [](Subject& subject, const String&) { subject.store->remove(subject.position()); });
}

void RemoveKey(benchmark::State& state) {
    removeEach(state, [](Subject& subject, const String& key) { subject.store->remove(key); });
}

void sizes(benchmark::internal::Benchmark* run) {
    run->RangeMultiplier(10)->Range(1'000, 1'000'000);
}
void sizesAndOrders(benchmark::internal::Benchmark* run) {
    run->ArgNames({"members", "scattered"})->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}});
}

BENCHMARK(Append)->Apply(sizes);
BENCHMARK(InsertBeforePosition)->Apply(sizes);
BENCHMARK(InsertBeforeKey)->Apply(sizes);
BENCHMARK(ReadPosition)->Apply(sizesAndOrders);
BENCHMARK(ReadKey)->Apply(sizes);
BENCHMARK(Enumerate)->Apply(sizes);
BENCHMARK(RemovePosition)->Apply(sizes);
BENCHMARK(RemoveKey)->Apply(sizes);

} // namespace
} // namespace vlgs
