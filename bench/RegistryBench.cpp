// SPDX-License-Identifier: MIT
// Ten times as many values in one key take ten times as long: adding, reading and enumerating them, through
// the class that callers use, over a hive on the disk.
#include "ini/Collection.h"
#include "registry/RegUtil.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vlgs {
namespace {

/// A registry of its own, with a navigator at a key.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "vlgs-bench-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
        ::setenv("VLGS_REGISTRY", folder_.c_str(), 1);
        reg->SetCurrHive(eHiveCurrUser);
        reg->AddKey(u"Software\\Bench", true);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    Ref<RegUtil> reg = make<RegUtil>();

  private:
    std::string folder_;
};

std::vector<String> names(std::int64_t count) {
    std::vector<String> result;
    for (std::int64_t i = 0; i < count; ++i)
        result.push_back(String::fromUtf8("Value " + std::to_string(i)));
    return result;
}

void addAll(RegUtil& reg, const std::vector<String>& all) {
    const auto value = make<RegValue>();
    value->SetDataType(eAsciiZString);
    for (const auto& name : all) {
        value->SetValueName(name);
        value->SetValue(name);
        if (!reg.AddOrUpdateValue(value))
            std::abort();
    }
}

void add(benchmark::State& state) {
    const auto all = names(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Folder folder;
        state.ResumeTiming();
        addAll(*folder.reg, all);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(add)->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void read(benchmark::State& state) {
    const auto all = names(state.range(0));
    Folder folder;
    addAll(*folder.reg, all);
    const auto value = make<RegValue>();
    for (auto _ : state)
        for (const auto& name : all) {
            value->SetValueName(name);
            if (!folder.reg->GetValue(value))
                std::abort();
        }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(read)->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void enumerate(benchmark::State& state) {
    Folder folder;
    addAll(*folder.reg, names(state.range(0)));
    for (auto _ : state) {
        const auto values = make<Collection>();
        if (!folder.reg->EnumValues(values))
            std::abort();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(enumerate)->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace vlgs
