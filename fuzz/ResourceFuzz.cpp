// SPDX-License-Identifier: MIT
// Files of message texts with any content: one, and behind the first "|" another that it may name as
// "more.txt".
// Covers: platform/StringResources.cpp platform/posix/StringResources.cpp
#include "Input.h"
#include "Scratch.h"
#include "platform/Files.h"
#include "platform/StringResources.h"
#include "platform/Volumes.h"

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Scratch scratch;
    fuzz::Input input(data, size);
    const auto number = static_cast<std::int32_t>(input.below(256));
    scratch.write("texts.en.txt", input.bytes());
    scratch.write("more.txt", input.rest());
    fuzz::succeeds([&] {
        const auto texts = StringResources::open(fullPath(String::fromUtf8(scratch.file("texts.dll"))));
        for (const auto wanted : {number, 0, 10000, 11513, 2147483647, -2147483647 - 1})
            texts->load(wanted);
    });
    return 0;
}
