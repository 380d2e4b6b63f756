// SPDX-License-Identifier: MIT
// A file that is written before it has its name.
//
// Invariant: until it is published nobody finds it under the name it is meant for, and when it is given up it
// leaves nothing in its folder. Where the host can, it has no name at all until then, so that a
// killed process leaves nothing either, or a file that a later one to write in that folder removes. It is
// claimed as long as it is open, so that who opens it at once waits for that instead of finding it in use.
// Temporary names cannot be foreseen, so nobody can be there first.
#pragma once

#include "platform/posix/Descriptor.h"

#include <optional>
#include <string>
#include <string_view>

namespace vlgs::posix {

class NewFile {
  public:
    /// A file to be published in a folder; nothing with errno when the folder takes none. The process's file
    /// creation mask applies to `mode`.
    static std::optional<NewFile> create(const std::string& folder, mode_t mode);

    NewFile(NewFile&&) noexcept = default;
    NewFile& operator=(NewFile&&) = delete;
    ~NewFile();

    int descriptor() const noexcept { return file_.get(); }

    /// Opens the file once more, for reading, with a shared claim that takes the place of this one's. None
    /// when the file has a temporary name, or when it cannot be claimed.
    Descriptor openShared() noexcept;

    /// Each answers 0 or the value of errno, EEXIST from `publish` when anything of that name is there.
    int write(std::string_view bytes) noexcept { return writeAll(file_.get(), bytes.data(), bytes.size()); }
    int flush() noexcept;
    int publish(const std::string& path);
    /// Takes the place of what is there, in one step.
    int publishOver(const std::string& path);

  private:
    NewFile(Descriptor file, std::string name, bool named) noexcept;
    int linkTo(const std::string& path) const noexcept;

    Descriptor file_;
    /// The path that it has, or may have, for the time being.
    std::string name_;
    bool named_;
};

/// Puts on the disk which files a folder holds.
void flushFolder(const std::string& folder) noexcept;

} // namespace vlgs::posix
