// SPDX-License-Identifier: MIT
#include "platform/posix/UserFolders.h"

#include "platform/posix/HostPath.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace vlgs::posix {

std::optional<std::string> trustedVariable(const char* name) {
#ifdef __linux__
    const char* value = ::secure_getenv(name);
#else
    const char* value = ::issetugid() ? nullptr : std::getenv(name);
#endif
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::string homeFolder() {
    if (auto home = trustedVariable("HOME").value_or(""); !home.empty())
        return home;
    passwd entry;
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    const bool known = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found;
    return known ? found->pw_dir : "";
}

std::string stateFolder() {
    auto state = trustedVariable("XDG_STATE_HOME").value_or("");
    if (!state.starts_with('/'))
        state = homeFolder() + "/.local/state";
    return state + "/vlgs";
}

int makeFolders(const std::string& folder) {
    if (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST)
        return 0;
    if (errno != ENOENT || folder == "/")
        return errno;
    if (const int error = makeFolders(parentFolder(folder)))
        return error;
    return ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? 0 : errno;
}

} // namespace vlgs::posix
