// SPDX-License-Identifier: MIT
// Creates objects of every creatable class, calls their members late bound, most of them in vain, and
// releases them.
//
//     Classes threads SECONDS    on eight threads at once, for the thread sanitizer
//     Classes loops COUNT        so often; memory and descriptors may not grow
//
// Prints how many. Ends with status 1 when something grows.
#include "library/Classes.h"
#include "automation/Array.h"
#include "automation/ClassInfo.h"
#include "base/Error.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vlgs {
namespace {

constexpr int threads = 8;

std::vector<const ClassInfo*> creatable() {
    std::vector<const ClassInfo*> found;
    for (const auto* info : classes())
        if (info->header().creatable)
            found.push_back(info);
    return found;
}

Variant anyValue(std::mt19937& random) {
    switch (random() % 8) {
    case 0:
        return {};
    case 1:
        return Variant(static_cast<std::int32_t>(random() % 5));
    case 2:
        return Variant(null);
    case 3:
        return Variant(2.5);
    case 4:
        return Variant(missing);
    case 5:
        return Variant(Array::ofStrings({u"a", u"b=1", u"[c]"}));
    default:
        static constexpr std::u16string_view texts[] = {u"", u"none", u"1/2/2003", u"[a]\r\nb=1",
                                                        u"<p>x</p>"};
        return Variant(String(texts[random() % std::size(texts)]));
    }
}

/// Creates an object and calls some of its members with any arguments.
void use(const ClassInfo& info, int calls, std::mt19937& random) {
    try {
        const auto object = info.create();
        for (int i = 0; i < calls; ++i) {
            const auto& member = info.members()[random() % info.members().size()];
            std::vector<Variant> arguments(random() % (member.parameters.size() + 2));
            for (auto& argument : arguments)
                argument = anyValue(random);
            try {
                object->invoke(member.id, InvokeKind::MethodOrGet, {arguments});
            } catch (const Error&) { // as most do
            }
        }
    } catch (const Error&) { // DDE, always
    }
}

int runThreads(int seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    const auto all = creatable();
    std::atomic<long> objects = 0;
    std::vector<std::thread> running;
    for (unsigned seed = 0; seed < threads; ++seed)
        running.emplace_back([&, seed] {
            std::mt19937 random(seed);
            for (; std::chrono::steady_clock::now() < end; ++objects)
                use(*all[random() % all.size()], 4, random);
        });
    for (auto& thread : running)
        thread.join();
    std::printf("%ld\n", objects.load());
    return 0;
}

struct Held {
    long pages = 0;
    long descriptors = 0;
};

Held heldNow() {
    Held held;
    long size = 0;
    std::ifstream("/proc/self/statm") >> size >> held.pages;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++held.descriptors;
    return held;
}

/// A tenth of the loops lets caches fill; what then grows by more than `slack` pages grows for ever.
int runLoops(long count) {
    constexpr long slack = 256;
    const auto all = creatable();
    std::mt19937 random(1);
    Held before;
    for (long i = 0; i < count; ++i) {
        if (i == count / 10)
            before = heldNow();
        use(*all[static_cast<std::size_t>(i) % all.size()], 1, random);
    }
    const auto after = heldNow();
    std::printf("%ld\n", count);
    const bool grows = after.pages > before.pages + slack || after.descriptors > before.descriptors;
    if (grows)
        std::cerr << "pages " << before.pages << " to " << after.pages << ", descriptors "
                  << before.descriptors << " to " << after.descriptors << '\n';
    return grows ? 1 : 0;
}

} // namespace
} // namespace vlgs

int main(int count, char** words) {
    const std::string kind = count == 3 ? words[1] : "";
    if (kind == "threads")
        return vlgs::runThreads(std::stoi(words[2]));
    if (kind == "loops")
        return vlgs::runLoops(std::stol(words[2]));
    return 2;
}
