// SPDX-License-Identifier: MIT
// A late-bound property read, by name and by number, against a typed call through a function that the
// compiler does not inline, and against a property of a GObject read by name; and the heap allocations of
// each by operator new (column "allocations", per call).
#include "automation/LateBound.h"
#include "support/TestBed.h"

#include <benchmark/benchmark.h>

#include <glib-object.h>

#include <climits>
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
    constexpr std::u16string_view number = u"Number";
    measure(state, [&] { benchmark::DoNotOptimize(callMember(bed, number, InvokeKind::PropertyGet, {})); });
}
BENCHMARK(readByName);

struct NumberObject {
    GObject object;
    int number;
};

GType numberType() {
    const auto prepare = [](gpointer type, gpointer) {
        auto* objectClass = static_cast<GObjectClass*>(type);
        objectClass->get_property = [](GObject* object, guint, GValue* value, GParamSpec*) {
            g_value_set_int(value, reinterpret_cast<NumberObject*>(object)->number);
        };
        const auto flags = static_cast<GParamFlags>(G_PARAM_READABLE | G_PARAM_STATIC_STRINGS);
        auto* number = g_param_spec_int("number", nullptr, nullptr, INT_MIN, INT_MAX, 0, flags);
        g_object_class_install_property(objectClass, 1, number);
    };
    static const GType type =
        g_type_register_static_simple(G_TYPE_OBJECT, "NumberObject", sizeof(GObjectClass), prepare,
                                      sizeof(NumberObject), nullptr, GTypeFlags{});
    return type;
}

void readGObjectByName(State& state) {
    auto* object = static_cast<GObject*>(g_object_new(numberType(), nullptr));
    measure(state, [&] {
        int number = 0;
        g_object_get(object, "number", &number, nullptr);
        benchmark::DoNotOptimize(number);
    });
    g_object_unref(object);
}
BENCHMARK(readGObjectByName);

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
    measure(state, [&] {
        benchmark::DoNotOptimize(callMember(bed, u"Weigh", InvokeKind::MethodOrGet, {arguments}));
    });
}
BENCHMARK(fourArgumentsByName);

} // namespace
} // namespace vlgs::test
