// SPDX-License-Identifier: MIT
// Files of message texts with any content: one, and behind the first "|" another that it may name as
// "more.txt".
#include "Input.h"
#include "platform/Files.h"
#include "platform/StringResources.h"
#include "platform/Volumes.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace vlgs;

namespace {

/// A folder that goes with the process.
class Scratch {
  public:
    Scratch() { ::mkdtemp(name_.data()); }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(name_, ignored);
    }
    std::string file(const char* name) const { return name_ + "/" + name; }

  private:
    std::string name_ = "/tmp/vlgs-fuzz-XXXXXX";
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Scratch scratch;
    fuzz::Input input(data, size);
    const auto number = static_cast<std::int32_t>(input.below(256));
    std::ofstream(scratch.file("texts.en.txt"), std::ios::binary) << input.bytes();
    std::ofstream(scratch.file("more.txt"), std::ios::binary) << input.rest();
    fuzz::succeeds([&] {
        const auto texts = StringResources::open(fullPath(String::fromUtf8(scratch.file("texts.dll"))));
        for (const auto wanted : {number, 0, 10000, 11513, 2147483647, -2147483647 - 1})
            texts->load(wanted);
    });
    return 0;
}
