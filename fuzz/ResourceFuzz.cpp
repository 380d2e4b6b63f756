// SPDX-License-Identifier: MIT
// Files of message texts with any content.
#include "Input.h"
#include "platform/StringResources.h"
#include "platform/Volumes.h"

#include <string>
#include <sys/mman.h>
#include <unistd.h>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = ::memfd_create("texts", 0);
    static const String path = fullPath(String::fromUtf8("/proc/self/fd/" + std::to_string(file)));
    fuzz::Input input(data, size);
    const auto number = static_cast<std::int32_t>(input.below(256) << 8 | input.below(256)) * 37 - 1000;
    if (::ftruncate(file, 0) != 0 || ::pwrite(file, input.rest().data(), input.rest().size(), 0) < 0)
        return 0;
    fuzz::succeeds([&] {
        const auto texts = StringResources::open(path);
        for (const auto wanted : {number, 0, 10000, 11513, 2147483647, -2147483647 - 1})
            texts->load(wanted);
    });
    return 0;
}
