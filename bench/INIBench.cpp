// INI documents: loading, look-ups in scattered order, writing and memory, beside GLib's GKeyFile and inih's
// INIReader.
//
//     INIBench [--benchmark_filter=…]
//
// The standard document has 2,000 sections of 200 keys, 16 MB of text. `per_key` is the time for one key;
// `bytes_per_key` the growth of the process's peak resident memory while it loads the document.
#include "ini/INIFile.h"
#include "ini/INIText.h"
#include "platform/Volumes.h"

#include <benchmark/benchmark.h>

#include <INIReader.h>
#include <glib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace vlgs;

constexpr int keysOfASection = 200;

std::string sectionName(std::int64_t i) {
    return "Section " + std::to_string(i);
}
std::string keyName(std::int64_t i) {
    return "Key" + std::to_string(i);
}

// A document in a file of its own, for as long as the program runs.
class SampleFile {
  public:
    explicit SampleFile(std::int64_t keys)
        : path_((std::filesystem::temp_directory_path() /
                 ("vlgs-bench-" + std::to_string(::getpid()) + "-" + std::to_string(keys) + ".ini"))
                    .string()) {
        std::ofstream file(path_, std::ios::binary);
        for (std::int64_t i = 0; i < keys; ++i) {
            if (i % keysOfASection == 0)
                file << "\r\n[" << sectionName(i / keysOfASection) << "]\r\n";
            file << keyName(i % keysOfASection) << "=the value of key number " << i << "\r\n";
        }
    }
    ~SampleFile() { std::remove(path_.c_str()); }

    const std::string& path() const { return path_; }
    static const SampleFile& ofKeys(std::int64_t keys) {
        static std::vector<std::pair<std::int64_t, std::unique_ptr<SampleFile>>> files;
        for (const auto& [count, file] : files)
            if (count == keys)
                return *file;
        return *files.emplace_back(keys, std::make_unique<SampleFile>(keys)).second;
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

void perKey(benchmark::State& state, std::int64_t keys) {
    state.counters["per_key"] =
        benchmark::Counter(static_cast<double>(keys) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <class Document>
void Load(benchmark::State& state) {
    const auto& file = SampleFile::ofKeys(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_unique<Document>(file));
    perKey(state, state.range(0));
}

template <class Document>
void LookUp(benchmark::State& state) {
    const auto keys = state.range(0);
    const Document document(SampleFile::ofKeys(keys));
    std::vector<typename Document::Name> sections, names;
    for (std::int64_t i = 0; i < keys / keysOfASection; ++i)
        sections.push_back(Document::name(sectionName(i)));
    for (std::int64_t i = 0; i < keysOfASection; ++i)
        names.push_back(Document::name(keyName(i)));
    std::vector<std::uint32_t> order(static_cast<std::size_t>(keys));
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<std::uint32_t>(i);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    for (auto _ : state) {
        std::size_t found = 0;
        for (const auto i : order)
            found += document.lookUp(sections[i / keysOfASection], names[i % keysOfASection]);
        benchmark::DoNotOptimize(found);
    }
    perKey(state, keys);
}

template <class Document>
void Write(benchmark::State& state) {
    const Document document(SampleFile::ofKeys(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(document.write());
    perKey(state, state.range(0));
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
    const auto& file = SampleFile::ofKeys(state.range(0));
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
    state.counters["bytes_per_key"] = kilobytes * 1024 / static_cast<double>(state.range(0));
}

constexpr std::int64_t standard = 400'000;

// First of all, while this process has no memory of its own to give to its children.
BENCHMARK(PeakMemory<Vlgs>)->Unit(benchmark::kMillisecond)->Iterations(3)->Arg(standard);
BENCHMARK(PeakMemory<GLib>)->Unit(benchmark::kMillisecond)->Iterations(3)->Arg(standard);
BENCHMARK(PeakMemory<Inih>)->Unit(benchmark::kMillisecond)->Iterations(3)->Arg(standard);
BENCHMARK(Load<Vlgs>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(Load<GLib>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(Load<Inih>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(LookUp<Vlgs>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(LookUp<GLib>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(LookUp<Inih>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(Write<Vlgs>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(Write<GLib>)->Unit(benchmark::kMillisecond)->Arg(standard);
BENCHMARK(Load<Vlgs>)->Name("Growth/Load")->RangeMultiplier(10)->Range(10'000, 1'000'000);
BENCHMARK(LookUp<Vlgs>)->Name("Growth/LookUp")->RangeMultiplier(10)->Range(10'000, 1'000'000);
BENCHMARK(LookUp<GLib>)->Name("Growth/LookUp/GLib")->RangeMultiplier(10)->Range(10'000, 1'000'000);

} // namespace
