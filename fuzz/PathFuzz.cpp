// SPDX-License-Identifier: MIT
// Any path over any table of volumes: the forms tell nothing twice, and a full path is its own.
// Covers: files/Path* platform/posix/Volume*
#include "Input.h"
#include "automation/Variant.h"
#include "files/Files.h"
#include "platform/Volumes.h"

#include <cstdlib>
#include <string>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto files = make<Files>();
    fuzz::Input input(data, size);
    const std::string table(input.bytes());
    ::setenv("VLGS_VOLUMES", table.find('\0') == table.npos && !table.empty() ? table.c_str() : "C:=/", 1);
    String path = input.text();
    const String base = input.text();
    files->IsUNCPathFormat(path);
    files->IsStandardPathFormat(path);
    files->IsRelativePathFormat(path);
    String full;
    if (fuzz::succeeds([&] { full = fullPath(path); }) && fullPath(full) != full)
        std::abort();
    fuzz::succeeds([&] { files->Path(path); });
    fuzz::succeeds([&] { files->ExtractPathVolume(path); });
    fuzz::succeeds([&] { files->TranslateToRelativePath(path, base); });
    fuzz::succeeds([&] { files->TranslateFromRelativePathNoFileCheck(path, base); });
    fuzz::succeeds([&] { files->IsSamePathVolume(path, base); });
    fuzz::succeeds([&] { files->TranslatePathToUNC(path); });
    return 0;
}
