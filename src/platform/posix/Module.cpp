// SPDX-License-Identifier: MIT
#include "platform/Module.h"

#include "platform/Files.h"
#include "platform/Volumes.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostPath.h"

#include <cstdint>
#include <dlfcn.h>
#include <fstream>
#include <sstream>

namespace vlgs {

using namespace posix;

namespace {

constexpr int levelsUp = 3;

/// What the host maps at an address, from its list of lines "from-to flags offset device inode   path".
std::string mappedFile(std::uintptr_t address) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::istringstream fields(line);
        std::uintptr_t from = 0;
        std::uintptr_t to = 0;
        char dash = 0;
        if (fields >> std::hex >> from >> dash >> to && from <= address && address < to)
            return line.substr(std::min(line.find('/'), line.size()));
    }
    return {};
}

/// The library's file as it was loaded. A program that was started by a relative path is looked up, since the
/// current folder may be another by now.
std::string moduleFile() {
    static const char here = 0;
    Dl_info info{};
    if (::dladdr(&here, &info) != 0 && info.dli_fname && info.dli_fname[0] == '/')
        return info.dli_fname;
    return mappedFile(reinterpret_cast<std::uintptr_t>(&here));
}

/// The library path of a resource near a file, "" when there is none.
String findNear(const std::string& file, std::u16string_view name) {
    auto folder = parentFolder(file);
    for (int i = 0; i <= levelsUp; ++i, folder = parentFolder(folder))
        for (const auto* place : {u"\\resources\\", u"\\share\\VlGeneralServices\\resources\\"})
            if (auto path = fullPath(concat(volumeName(folder).text, place, name)); fileExists(path))
                return path;
    return {};
}

} // namespace

String moduleFolder() {
    return volumeName(parentFolder(moduleFile())).text;
}

String moduleFileName() {
    const auto file = moduleFile();
    return libraryName(std::string_view(file).substr(file.rfind('/') + 1));
}

String resourcePath(std::u16string_view name) {
    const auto file = moduleFile();
    auto found = findNear(file, name);
    return found.empty() ? findNear(withoutLinks(file), name) : found;
}

} // namespace vlgs
