// SPDX-License-Identifier: MIT
// Text to and from 8-bit code pages, against the host's iconv; the user's locale and page found again.
#include "platform/CodePage.h"
#include "platform/Locale.h"

#include <benchmark/benchmark.h>

#include <iconv.h>

namespace vlgs {
namespace {

constexpr std::size_t textLength = 1 << 20;

/// A text of one page: plain ASCII, or with every `step`-th character another one.
std::u16string sample(char16_t other, std::size_t step) {
    std::u16string text(textLength, u'a');
    for (std::size_t i = 0; step != 0 && i < text.size(); i += step)
        text[i] = other;
    return text;
}

struct Work {
    unsigned page;
    const char* iconvName;
    std::u16string text;
};

const Work& work(benchmark::State& state) {
    static const Work all[] = {{1252, "CP1252", sample(u'a', 0)},
                               {1252, "CP1252", sample(u'é', 20)},
                               {932, "CP932", sample(u'a', 0)},
                               {932, "CP932", sample(u'語', 2)}};
    return all[state.range(0)];
}

void countCharacters(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(textLength));
}

void encode(benchmark::State& state) {
    const auto& [number, name, text] = work(state);
    const auto page = *CodePage::find(number);
    for (auto _ : state)
        benchmark::DoNotOptimize(page.encode(text));
    countCharacters(state);
}

void decode(benchmark::State& state) {
    const auto& [number, name, text] = work(state);
    const auto page = *CodePage::find(number);
    const auto bytes = page.encode(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(page.decode(bytes));
    countCharacters(state);
}

void convert(benchmark::State& state, const char* to, const char* from, const void* input, std::size_t size) {
    const auto converter = iconv_open(to, from);
    for (auto _ : state) {
        std::string output(2 * textLength, '\0');
        auto* in = static_cast<char*>(const_cast<void*>(input));
        auto* out = output.data();
        auto left = size;
        auto room = output.size();
        benchmark::DoNotOptimize(iconv(converter, &in, &left, &out, &room));
        benchmark::DoNotOptimize(output);
    }
    iconv_close(converter);
    countCharacters(state);
}

void encodeByIconv(benchmark::State& state) {
    const auto& [number, name, text] = work(state);
    convert(state, name, "UTF-16LE", text.data(), 2 * text.size());
}

void decodeByIconv(benchmark::State& state) {
    const auto& [number, name, text] = work(state);
    const auto bytes = CodePage::find(number)->encode(text);
    convert(state, "UTF-16LE", name, bytes.data(), bytes.size());
}

void findTheSystemPage(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(CodePage::system());
}

void findTheUsersShortDate(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(Locale::user().text(LocaleItem::ShortDatePattern));
}

BENCHMARK(encode)->DenseRange(0, 3);
BENCHMARK(encodeByIconv)->DenseRange(0, 3);
BENCHMARK(decode)->DenseRange(0, 3);
BENCHMARK(decodeByIconv)->DenseRange(0, 3);
BENCHMARK(findTheSystemPage);
BENCHMARK(findTheUsersShortDate);

} // namespace
} // namespace vlgs
