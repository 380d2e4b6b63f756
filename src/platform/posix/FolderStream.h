// SPDX-License-Identifier: MIT
// The entries of one host folder.
#pragma once

#include "base/Owned.h"

#include <dirent.h>
#include <string>

namespace vlgs::posix {

class FolderStream {
  public:
    /// A folder that cannot be read has no entries, and `opened` is false.
    explicit FolderStream(const std::string& path) : folder_(::opendir(path.c_str())) {}

    bool opened() const noexcept { return static_cast<bool>(folder_); }
    int descriptor() const noexcept { return ::dirfd(folder_.get()); }

    /// The next entry but "." and "..", null at the end.
    const dirent* next() noexcept {
        while (folder_)
            if (const auto* entry = ::readdir(folder_.get()); !entry || !isDots(entry->d_name))
                return entry;
        return nullptr;
    }

  private:
    static bool isDots(const char* name) noexcept {
        return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
    }

    static void close(DIR* folder) noexcept { ::closedir(folder); }

    Owned<DIR*, &close> folder_;
};

} // namespace vlgs::posix
