// SPDX-License-Identifier: MIT
// Lists of 10^3 to 10^6 members: the time of each member stays the same.
#include "automation/Array.h"
#include "general/Lists.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace vlgs {
namespace {

std::vector<std::int32_t> numbers(std::int64_t count) {
    std::vector<std::int32_t> result(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<std::int32_t>(i * 7919 % 1'000'000);
    return result;
}

void countMembers(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void variantToCSV(benchmark::State& state) {
    const Variant array = Array::ofLongs(numbers(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(g_VariantToCSV(array));
    countMembers(state);
}
BENCHMARK(variantToCSV)->RangeMultiplier(10)->Range(1'000, 1'000'000);

void collectionToCSV(benchmark::State& state) {
    const auto items = make<OrderedCollection>();
    for (const auto number : numbers(state.range(0)))
        items->Add(number);
    for (auto _ : state)
        benchmark::DoNotOptimize(g_CollectionToCSV(items));
    countMembers(state);
}
BENCHMARK(collectionToCSV)->RangeMultiplier(10)->Range(1'000, 1'000'000);

void csvToVariant(benchmark::State& state) {
    const String list = g_VariantToCSV(Array::ofLongs(numbers(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(g_CSVToVariant(list, u",", 50));
    countMembers(state);
}
BENCHMARK(csvToVariant)->RangeMultiplier(10)->Range(1'000, 1'000'000);

void parseDelimitedString(benchmark::State& state) {
    String list = g_VariantToCSV(Array::ofLongs(numbers(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(g_ParseDelimitedString(list, u","));
    countMembers(state);
}
BENCHMARK(parseDelimitedString)->RangeMultiplier(10)->Range(1'000, 1'000'000);

} // namespace
} // namespace vlgs
