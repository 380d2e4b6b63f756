// SPDX-License-Identifier: MIT
// Stands in for libFuzzer where the compiler has none: inputs from a fixed seed, for
// `-max_total_time=SECONDS`; half of them random with a bias to the characters that the readers treat
// specially, half changed from the files of the folders that are named. Other options are accepted and not
// used.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<Bytes> filesOf(const char* folder) {
    std::vector<Bytes> files;
    if (std::filesystem::is_directory(folder))
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::ifstream file(entry.path(), std::ios::binary);
            files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    return files;
}

Bytes input(std::mt19937_64& random, const std::vector<Bytes>& seeds) {
    static constexpr std::string_view special = "\r\n[]=;,/()-\"'<>&\\{} .:ABCaz019%~\xFF\xFE\xEF";
    const auto any = [&] {
        return static_cast<std::uint8_t>(random() % 3 == 0 ? random() : special[random() % special.size()]);
    };
    if (!seeds.empty() && random() % 2 == 0) {
        auto bytes = seeds[random() % seeds.size()];
        for (auto changes = random() % 6; changes > 0 && !bytes.empty(); --changes) {
            const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(random() % bytes.size());
            if (random() % 3 == 0)
                bytes.insert(at, any());
            else if (random() % 2 == 0)
                bytes.erase(at);
            else
                *at = any();
        }
        return bytes;
    }
    Bytes bytes(random() % (random() % 16 == 0 ? 20000 : 200));
    for (auto& byte : bytes)
        byte = any();
    return bytes;
}

} // namespace

int main(int count, char** arguments) {
    constexpr std::string_view option = "-max_total_time=";
    int seconds = 10;
    std::vector<Bytes> seeds;
    for (int i = 1; i < count; ++i)
        if (std::string_view(arguments[i]).starts_with(option))
            seconds = std::atoi(arguments[i] + option.size());
        else if (arguments[i][0] != '-')
            for (auto& seed : filesOf(arguments[i]))
                seeds.push_back(std::move(seed));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    std::mt19937_64 random(20091);
    long runs = 0;
    for (; std::chrono::steady_clock::now() < end; ++runs) {
        const auto bytes = input(random, seeds);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%ld runs\n", runs);
}
