// SPDX-License-Identifier: MIT
// Enciphering and deciphering 4 MB from text to hexadecimal text and back, against Crypto++'s SKIPJACK in ECB
// mode over the same bytes, which neither writes nor reads digits.
#include "cipher/CipherText.h"

#include <benchmark/benchmark.h>
#include <cryptopp/modes.h>
#include <cryptopp/skipjack.h>

#include <string>

namespace vlgs {
namespace {

constexpr std::size_t length = 4 << 20;
const Skipjack::Key key = cipherKey(u"00998877665544332211");

String sampleText() {
    return String::build(length, [](char16_t* to) {
        for (std::size_t i = 0; i < length; ++i)
            to[i] = static_cast<char16_t>(u' ' + i * 7 % 90);
    });
}

void encode(benchmark::State& state) {
    const String text = sampleText();
    for (auto _ : state)
        benchmark::DoNotOptimize(encipherText(text, key));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * length));
}
BENCHMARK(encode)->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state) {
    const String digits = encipherText(sampleText(), key);
    for (auto _ : state)
        benchmark::DoNotOptimize(decipherText(digits, key));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * length));
}
BENCHMARK(decode)->Unit(benchmark::kMillisecond);

template <class Mode>
void cryptoPP(benchmark::State& state) {
    std::string bytes(length, 'x');
    Mode mode;
    mode.SetKey(key.data(), key.size());
    auto* data = reinterpret_cast<CryptoPP::byte*>(bytes.data());
    for (auto _ : state)
        mode.ProcessData(data, data, bytes.size());
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * length));
}
BENCHMARK(cryptoPP<CryptoPP::ECB_Mode<CryptoPP::SKIPJACK>::Encryption>)->Unit(benchmark::kMillisecond);
BENCHMARK(cryptoPP<CryptoPP::ECB_Mode<CryptoPP::SKIPJACK>::Decryption>)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vlgs
