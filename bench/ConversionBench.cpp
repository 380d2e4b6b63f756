// SPDX-License-Identifier: MIT
// Timestamps against the C library's strftime and strptime in the same forms, revision numbers by their
// allocations.
#include "CountAllocations.h"
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "base/Dates.h"
#include "conversion/RevisionNumbers.h"
#include "conversion/Timestamps.h"

#include <benchmark/benchmark.h>

#include <ctime>

namespace {

using namespace vlgs;

void FormatTimestamp(benchmark::State& state) {
    const Date date = dateOf({2009, 3, 7, 14, 5, 9});
    const DatePattern pattern(universalTimestampFormat);
    for (auto _ : state)
        benchmark::DoNotOptimize(formatDate(date, pattern));
}
BENCHMARK(FormatTimestamp);

void FormatTimestamp_strftime(benchmark::State& state) {
    std::tm parts{};
    parts.tm_year = 109;
    parts.tm_mon = 2;
    parts.tm_mday = 7;
    parts.tm_hour = 14;
    parts.tm_min = 5;
    parts.tm_sec = 9;
    for (auto _ : state) {
        char text[32];
        benchmark::DoNotOptimize(std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts));
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(FormatTimestamp_strftime);

void ParseTimestamp(benchmark::State& state) {
    const Variant text(u"2009-03-07 14:05:09");
    for (auto _ : state) {
        Date date;
        benchmark::DoNotOptimize(g_CTimestamp(text, {}, date, true, false));
    }
}
BENCHMARK(ParseTimestamp);

void ReadTimestamp(benchmark::State& state) {
    const String text(u"2009-03-07 14:05:09");
    for (auto _ : state)
        benchmark::DoNotOptimize(parseDate(text));
}
BENCHMARK(ReadTimestamp);

void ParseTimestamp_strptime(benchmark::State& state) {
    const char* text = "2009-03-07 14:05:09";
    for (auto _ : state) {
        std::tm parts{};
        benchmark::DoNotOptimize(strptime(text, "%Y-%m-%d %H:%M:%S", &parts));
        benchmark::DoNotOptimize(parts);
    }
}
BENCHMARK(ParseTimestamp_strptime);

void CompareRevisions(benchmark::State& state) {
    String first = u"12.0042";
    String second = u"12.43";
    const std::size_t before = allocations;
    for (auto _ : state)
        benchmark::DoNotOptimize(g_CompareRevisionNumber(first, second));
    state.counters["allocations"] = static_cast<double>(allocations - before);
}
BENCHMARK(CompareRevisions);

} // namespace
