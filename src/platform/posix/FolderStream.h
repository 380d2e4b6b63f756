// The entries of one host folder.
#pragma once

#include <dirent.h>
#include <memory>
#include <string>

namespace vlgs::posix {

class FolderStream {
  public:
    /// A folder that cannot be read has no entries, and `opened` is false.
    explicit FolderStream(const std::string& path) : folder_(::opendir(path.c_str())) {}

    bool opened() const noexcept { return folder_ != nullptr; }
    int descriptor() const noexcept { return ::dirfd(folder_.get()); }

    /// The next entry but "." and "..", null at the end.
    const dirent* next() noexcept {
        while (folder_)
            if (const auto* entry = ::readdir(folder_.get()); !entry || !isDots(entry->d_name))
                return entry;
        return nullptr;
    }

  private:
    struct Close {
        void operator()(DIR* folder) const noexcept { ::closedir(folder); }
    };
    static bool isDots(const char* name) noexcept {
        return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
    }

    std::unique_ptr<DIR, Close> folder_;
};

} // namespace vlgs::posix
