// SPDX-License-Identifier: MIT
// Stands in for libFuzzer where the compiler has none: random inputs from a fixed seed, for
// `-max_total_time=SECONDS`, with a bias to the characters that the readers treat specially. Other options
// and the corpus folder are accepted and not used.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> input(std::mt19937_64& random) {
    static constexpr std::string_view special = "\r\n[]=;,/()-\"'<>&\\{} .:ABCaz019%~\xFF\xFE\xEF";
    std::vector<std::uint8_t> bytes(random() % (random() % 16 == 0 ? 20000 : 200));
    for (auto& byte : bytes)
        byte = static_cast<std::uint8_t>(random() % 3 == 0 ? random() : special[random() % special.size()]);
    return bytes;
}

} // namespace

int main(int count, char** arguments) {
    constexpr std::string_view option = "-max_total_time=";
    int seconds = 10;
    for (int i = 1; i < count; ++i)
        if (std::string_view(arguments[i]).starts_with(option))
            seconds = std::atoi(arguments[i] + option.size());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    std::mt19937_64 random(20091);
    long runs = 0;
    for (; std::chrono::steady_clock::now() < end; ++runs) {
        const auto bytes = input(random);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%ld runs\n", runs);
}
