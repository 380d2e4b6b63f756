// SPDX-License-Identifier: MIT
// Files whose attributes somebody else has stored: they are read, changed, and read as what was written.
// Covers: platform/posix/Attributes.cpp
#include "Input.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <cstdlib>
#include <string>
#include <sys/xattr.h>
#include <unistd.h>

using namespace vlgs;

namespace {

/// A file where the file system keeps attributes.
const std::string& scratchFile() {
    static const std::string name = [] {
        std::string made = "/tmp/vlgs-fuzz-XXXXXX";
        ::close(::mkstemp(made.data()));
        std::atexit([] { ::unlink(name.c_str()); });
        return made;
    }();
    return name;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const String path = fullPath(String::fromUtf8(scratchFile()));
    fuzz::Input input(data, size);
    const auto wanted = FileAttributes(input.below(8) & 6) | FileAttributes(input.below(2) * 0x20);
    if (::setxattr(scratchFile().c_str(), "user.DOSATTRIB", input.rest().data(), input.rest().size(), 0) != 0)
        return 0;
    fuzz::succeeds([&] {
        attributes(path);
        setAttributes(path, wanted);
        if (attributes(path) != wanted)
            std::abort();
    });
    return 0;
}
