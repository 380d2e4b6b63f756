// SPDX-License-Identifier: MIT
// Property strings read and written, 10^3 to 10^6 entries; the rates count one byte for each character.
#include "viewprops/PropertyString.h"

#include <benchmark/benchmark.h>

#include <string>

namespace vlgs {
namespace {

/// Entries as a view has them: widths, flags, titles, a few lists.
String sample(std::int64_t entries) {
    std::string text;
    for (std::int64_t i = 0; i < entries; ++i) {
        const auto number = std::to_string(i);
        switch (i % 5) {
        case 0:
            text += "ColumnWidth" + number + "=/i" + number + ";";
            break;
        case 1:
            text += "Shown" + number + "=/b1;";
            break;
        case 2:
            text += "Title" + number + "=/s\"Open, by owner (" + number + ")\";";
            break;
        case 3:
            text += "Columns" + number + "=/c(/i120,/i80,/sName);";
            break;
        default:
            text += "Map" + number + "=/d(/sA-/i1,/sB-/i2);";
        }
    }
    return String::fromUtf8(text);
}

void countCharacters(benchmark::State& state, const String& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
    state.SetComplexityN(state.range(0));
}

void read(benchmark::State& state) {
    const auto text = sample(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(g_BuildPropertyObject(text));
    countCharacters(state, text);
}

void write(benchmark::State& state) {
    const auto text = sample(state.range(0));
    const auto properties = g_BuildPropertyObject(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(g_BuildPropertyString(properties));
    countCharacters(state, text);
}

void readPlainEntries(benchmark::State& state) {
    std::string text;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        text += "Key" + std::to_string(i) + "=/i" + std::to_string(i) + ";";
    const auto plain = String::fromUtf8(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(g_BuildPropertyObject(plain));
    countCharacters(state, plain);
}

BENCHMARK(read)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(write)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(readPlainEntries)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vlgs
