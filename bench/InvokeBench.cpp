// SPDX-License-Identifier: MIT
// A late-bound property read, by name and by number, against a typed call through a function that the
// compiler does not inline; and the heap allocations of each (column "allocations", per call).
#include "automation/LateBound.h"
#include "support/TestBed.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

namespace {
std::size_t allocations = 0;
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace vlgs::test {
namespace {

using benchmark::State;

template <class Body>
void measure(State& state, Body&& body) {
    body();
    const std::size_t before = allocations;
    for (auto _ : state)
        body();
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocations - before), benchmark::Counter::kAvgIterations);
}

[[gnu::noinline]] std::int32_t readNumber(const TestBed& bed) {
    return bed.Number();
}
[[gnu::noinline]] Variant echo(TestBed& bed, const Variant& value) {
    return bed.Echo(value);
}

void typedRead(State& state) {
    const auto bed = make<TestBed>();
    measure(state, [&] {
        const TestBed* object = bed.get();
        benchmark::DoNotOptimize(object);
        benchmark::DoNotOptimize(readNumber(*object));
    });
}
BENCHMARK(typedRead);

void readByName(State& state) {
    const Ref<Object> bed = make<TestBed>();
    measure(state,
            [&] { benchmark::DoNotOptimize(callMember(bed, u"Number", InvokeKind::PropertyGet, {})); });
}
BENCHMARK(readByName);

void readByNumber(State& state) {
    const Ref<Object> bed = make<TestBed>();
    const DispatchId number = bed->idOf(u"Number");
    measure(state, [&] { benchmark::DoNotOptimize(bed->invoke(number, InvokeKind::PropertyGet, {})); });
}
BENCHMARK(readByNumber);

void typedEcho(State& state) {
    const auto bed = make<TestBed>();
    const Variant value = 5;
    measure(state, [&] { benchmark::DoNotOptimize(echo(*bed, value)); });
}
BENCHMARK(typedEcho);

void echoByName(State& state) {
    const Ref<Object> bed = make<TestBed>();
    measure(state, [&] { benchmark::DoNotOptimize(call(bed, u"Echo", 5)); });
}
BENCHMARK(echoByName);

void fourArgumentsByName(State& state) {
    const Ref<Object> bed = make<TestBed>();
    Variant arguments[] = {7, u"text", 2.5, 3};
    measure(state,
            [&] { benchmark::DoNotOptimize(callMember(bed, u"Weigh", InvokeKind::MethodOrGet, arguments)); });
}
BENCHMARK(fourArgumentsByName);

} // namespace
} // namespace vlgs::test
