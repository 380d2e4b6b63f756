// SPDX-License-Identifier: MIT
// INI documents beside GLib's GKeyFile and inih's INIReader: loading, freeing, look-ups in scattered order,
// writing, saving and memory.
//
//     INIBench [--benchmark_filter=…]
//
// The standard document has 2,000 sections of 200 keys, 16 MB of text; a huge one has all its keys in one
// section. `per_key` is the time for one key; `bytes_per_key` the memory of the loaded document by the
// allocator's own count
// (`Memory`) or the growth of the process's peak resident memory (`PeakMemory`), 0 where it is not measured.
// In rows named "beside" a document of the other library is made before each measured one, in the same heap.
#include "ini/INIFile.h"
#include "ini/INIText.h"
#include "platform/Volumes.h"

#include <benchmark/benchmark.h>

#include <INIReader.h>
#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace vlgs;

constexpr std::int64_t keysOfASection = 200;
// As a number of keys for each section: all in one.
constexpr std::int64_t inOneSection = 1'000'000'000;

std::string sectionName(std::int64_t i) {
    return "Section " + std::to_string(i);
}
std::string keyName(std::int64_t i) {
    return "Key" + std::to_string(i);
}

struct Shape {
    std::int64_t keys;
    std::int64_t ofASection;
    friend bool operator==(const Shape&, const Shape&) = default;
};

// A document in a file of its own, for as long as the program runs.
class SampleFile {
  public:
    explicit SampleFile(Shape shape)
        : path_((std::filesystem::temp_directory_path() /
                 ("vlgs-bench-" + std::to_string(::getpid()) + "-" + std::to_string(shape.keys) + "-" +
                  std::to_string(shape.ofASection) + ".ini"))
                    .string()) {
        std::ofstream file(path_, std::ios::binary);
        for (std::int64_t i = 0; i < shape.keys; ++i) {
            if (i % shape.ofASection == 0)
                file << "\r\n[" << sectionName(i / shape.ofASection) << "]\r\n";
            file << keyName(i % shape.ofASection) << "=the value of key number " << i << "\r\n";
        }
    }
    ~SampleFile() { std::remove(path_.c_str()); }

    const std::string& path() const { return path_; }
    static const SampleFile& of(Shape shape) {
        static std::vector<std::pair<Shape, std::unique_ptr<SampleFile>>> files;
        for (const auto& [known, file] : files)
            if (known == shape)
                return *file;
        return *files.emplace_back(shape, std::make_unique<SampleFile>(shape)).second;
    }

  private:
    std::string path_;
};

// ---- The three documents ----

struct Vlgs {
    explicit Vlgs(const SampleFile& file) : document(make<INIFile>()) {
        readFileInto(*document, String::fromUtf8(file.path()));
    }
    using Name = String;
    static Name name(const std::string& text) { return String::fromUtf8(text); }
    std::size_t lookUp(const Name& section, const Name& key) const {
        return document->KeyValue(section, key).length();
    }
    std::size_t write() const { return document->GetStream(true).text().length(); }
    void save(const std::string& path) const { document->Save(String::fromUtf8(path)); }
    // Every key as an object.
    std::size_t handOut() const {
        std::size_t length = 0;
        for (std::int32_t section = 1; section <= document->Count(); ++section)
            for (std::int32_t key = 1; key <= document->KeyCount(section); ++key)
                length += document->Key(section, key)->name().length();
        return length;
    }
    Ref<INIFile> document;
};

struct GLib {
    explicit GLib(const SampleFile& sample) : file(g_key_file_new()) {
        g_key_file_load_from_file(file, sample.path().c_str(), G_KEY_FILE_NONE, nullptr);
    }
    ~GLib() { g_key_file_free(file); }
    GLib(const GLib&) = delete;
    using Name = std::string;
    static Name name(const std::string& text) { return text; }
    std::size_t lookUp(const Name& section, const Name& key) const {
        char* value = g_key_file_get_value(file, section.c_str(), key.c_str(), nullptr);
        const std::size_t length = value[0] ? 1 : 0;
        g_free(value);
        return length;
    }
    std::size_t write() const {
        gsize length = 0;
        g_free(g_key_file_to_data(file, &length, nullptr));
        return length;
    }
    void save(const std::string& path) const { g_key_file_save_to_file(file, path.c_str(), nullptr); }
    GKeyFile* file;
};

struct Inih {
    explicit Inih(const SampleFile& file) : reader(file.path()) {}
    using Name = std::string;
    static Name name(const std::string& text) { return text; }
    std::size_t lookUp(const Name& section, const Name& key) const {
        return reader.Get(section, key, "").length();
    }
    INIReader reader;
};

// ---- The work ----

Shape shapeOf(const benchmark::State& state) {
    return {state.range(0), state.range(1)};
}

void perKey(benchmark::State& state, double bytes = 0) {
    const auto keys = static_cast<double>(state.range(0));
    state.counters["per_key"] = benchmark::Counter(keys * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["bytes_per_key"] = bytes / keys;
}

struct Nothing {
    explicit Nothing(const SampleFile&) {}
};

enum class Step { Load, Free, Write, Save, LoadAndHandOut };

// One step of a document's life; the others stay outside of the clock, like the document beside it.
template <class Document, Step step, class Beside = Nothing>
void Life(benchmark::State& state) {
    const auto& file = SampleFile::of(shapeOf(state));
    const std::string copy = file.path() + ".saved";
    const auto clock = [&](Step now, auto&& work) {
        if (now == step)
            state.ResumeTiming();
        work();
        if (now == step)
            state.PauseTiming();
    };
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<Document> document;
        auto beside = std::make_unique<Beside>(file);
        if constexpr (step == Step::LoadAndHandOut)
            clock(step, [&] {
                document = std::make_unique<Document>(file);
                benchmark::DoNotOptimize(document->handOut());
            });
        else
            clock(Step::Load, [&] { document = std::make_unique<Document>(file); });
        if constexpr (step == Step::Write)
            clock(step, [&] { benchmark::DoNotOptimize(document->write()); });
        if constexpr (step == Step::Save)
            clock(step, [&] { document->save(copy); });
        clock(Step::Free, [&] { document.reset(); });
        beside.reset();
        state.ResumeTiming();
    }
    std::remove(copy.c_str());
    perKey(state);
}

// What a look-up asks for, by numbers of names.
struct Question {
    std::uint32_t section;
    std::uint32_t key;
};

// Scattered order. The keys' names stand in the order of their first use, so that reading them costs little
// where each is used once.
template <class Document, class Beside = Nothing>
void LookUp(benchmark::State& state) {
    const auto [keys, ofASection] = shapeOf(state);
    const auto& file = SampleFile::of({keys, ofASection});
    const Beside beside(file);
    const Document document(file);
    std::vector<std::uint32_t> order(static_cast<std::size_t>(keys));
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    std::vector<typename Document::Name> sections, names;
    for (std::int64_t i = 0; i < keys; i += ofASection)
        sections.push_back(Document::name(sectionName(i / ofASection)));
    std::vector<std::uint32_t> numbers(static_cast<std::size_t>(std::min(keys, ofASection)), ~0u);
    std::vector<Question> questions;
    for (const auto i : order) {
        auto& number = numbers[static_cast<std::size_t>(i % ofASection)];
        if (number == ~0u) {
            number = static_cast<std::uint32_t>(names.size());
            names.push_back(Document::name(keyName(i % ofASection)));
        }
        questions.push_back({static_cast<std::uint32_t>(i / ofASection), number});
    }
    for (auto _ : state) {
        std::size_t found = 0;
        for (const auto [section, key] : questions)
            found += document.lookUp(sections[section], names[key]);
        benchmark::DoNotOptimize(found);
    }
    perKey(state);
}

// By the allocator's count, with every key handed out as an object or as it was loaded.
template <class Document, bool handedOut = false>
void Memory(benchmark::State& state) {
    const auto& file = SampleFile::of(shapeOf(state));
    const auto inUse = [] {
        const auto info = ::mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    double bytes = 0;
    for (auto _ : state) {
        const double before = inUse();
        const Document document(file);
        if constexpr (handedOut)
            document.handOut();
        bytes = inUse() - before;
    }
    perKey(state, bytes);
}

// In kilobytes, a line of /proc/self/status.
double memory(const char* item) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(item))
            return std::stod(line.substr(line.find(':') + 1));
    return 0;
}

// Each load has a process of its own.
template <class Document>
void PeakMemory(benchmark::State& state) {
    const auto& file = SampleFile::of(shapeOf(state));
    double kilobytes = 0;
    for (auto _ : state) {
        int ends[2];
        if (::pipe(ends) != 0)
            return state.SkipWithError("no pipe");
        const pid_t child = ::fork();
        if (child == 0) {
            const double before = memory("VmRSS");
            std::ofstream("/proc/self/clear_refs") << 5; // the peak starts anew
            const Document document(file);
            const double growth = memory("VmHWM") - before;
            ::_exit(::write(ends[1], &growth, sizeof growth) == sizeof growth ? 0 : 1);
        }
        if (::read(ends[0], &kilobytes, sizeof kilobytes) != sizeof kilobytes)
            state.SkipWithError("no measure");
        ::waitpid(child, nullptr, 0);
        ::close(ends[0]);
        ::close(ends[1]);
    }
    perKey(state, kilobytes * 1024);
}

void standard(benchmark::internal::Benchmark* run) {
    run->ArgNames({"keys", "of_a_section"})->Unit(benchmark::kMillisecond)->Args({400'000, keysOfASection});
}
void standardAndHuge(benchmark::internal::Benchmark* run) {
    run->Apply(standard)->Args({1'000'000, inOneSection});
}
void growing(benchmark::internal::Benchmark* run) {
    run->ArgNames({"keys", "of_a_section"})->Unit(benchmark::kMillisecond);
    for (const std::int64_t keys : {10'000, 31'600, 100'000, 316'000, 1'000'000})
        run->Args({keys, keysOfASection});
}

// First of all, while this process has no memory of its own to give to its children.
BENCHMARK(PeakMemory<Vlgs>)->Iterations(3)->Apply(standardAndHuge);
BENCHMARK(PeakMemory<GLib>)->Iterations(3)->Apply(standardAndHuge);
BENCHMARK(PeakMemory<Inih>)->Iterations(3)->Apply(standard);
BENCHMARK(Memory<Vlgs>)->Iterations(1)->Apply(standardAndHuge);
BENCHMARK(Memory<Vlgs, true>)->Name("Memory<Vlgs>/handed_out")->Iterations(1)->Apply(standardAndHuge);
BENCHMARK(Memory<GLib>)->Iterations(1)->Apply(standardAndHuge);
BENCHMARK(Life<Vlgs, Step::Load>)->Name("Load<Vlgs>")->Apply(standardAndHuge);
BENCHMARK(Life<GLib, Step::Load>)->Name("Load<GLib>")->Apply(standardAndHuge);
BENCHMARK(Life<Inih, Step::Load>)->Name("Load<Inih>")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::Load, GLib>)->Name("Load<Vlgs>/beside")->Apply(standard);
BENCHMARK(Life<GLib, Step::Load, Vlgs>)->Name("Load<GLib>/beside")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::LoadAndHandOut>)->Name("LoadAndHandOut<Vlgs>")->Apply(standardAndHuge);
BENCHMARK(Life<Vlgs, Step::Free>)->Iterations(5)->Name("Free<Vlgs>")->Apply(standardAndHuge);
BENCHMARK(Life<GLib, Step::Free>)->Iterations(5)->Name("Free<GLib>")->Apply(standardAndHuge);
BENCHMARK(Life<Vlgs, Step::Free, GLib>)->Iterations(5)->Name("Free<Vlgs>/beside")->Apply(standard);
BENCHMARK(Life<GLib, Step::Free, Vlgs>)->Iterations(5)->Name("Free<GLib>/beside")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::Write>)->Name("Write<Vlgs>")->Apply(standard);
BENCHMARK(Life<GLib, Step::Write>)->Name("Write<GLib>")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::Write, GLib>)->Name("Write<Vlgs>/beside")->Apply(standard);
BENCHMARK(Life<GLib, Step::Write, Vlgs>)->Name("Write<GLib>/beside")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::Save>)->Name("Save<Vlgs>")->Apply(standard);
BENCHMARK(Life<GLib, Step::Save>)->Name("Save<GLib>")->Apply(standard);
BENCHMARK(Life<Vlgs, Step::Save, GLib>)->Name("Save<Vlgs>/beside")->Apply(standard);
BENCHMARK(Life<GLib, Step::Save, Vlgs>)->Name("Save<GLib>/beside")->Apply(standard);
BENCHMARK(LookUp<Vlgs>)->Apply(growing)->Args({1'000'000, inOneSection});
BENCHMARK(LookUp<GLib>)->Apply(growing)->Args({1'000'000, inOneSection});
BENCHMARK(LookUp<Inih>)->Apply(standard);
BENCHMARK(LookUp<Vlgs, GLib>)->Name("LookUp<Vlgs>/beside")->Apply(standardAndHuge);
BENCHMARK(LookUp<GLib, Vlgs>)->Name("LookUp<GLib>/beside")->Apply(standardAndHuge);
BENCHMARK(Life<Vlgs, Step::Load>)->Name("Growth/Load<Vlgs>")->Apply(growing);
BENCHMARK(Life<GLib, Step::Load>)->Name("Growth/Load<GLib>")->Apply(growing);

} // namespace
