// SPDX-License-Identifier: MIT
// A hive in its file.
//
// Invariants: The tree is what the file's text says up to `end_`, but for changes that others have made since
// it was read last. The file is only ever added to, or replaced as a whole, both under a lock; so a process
// that is killed leaves at most an addition without an end, which nobody reads. Locks are waited for a few
// seconds: who may only read a hive cannot keep others from it. (Only a file of a form that takes no
// additions, in a folder that takes no new file, is once written over.) Additions are folded into the text
// when they outgrow it, hence their cost is constant on average.
#pragma once

#include "platform/posix/Descriptor.h"
#include "platform/posix/RegistryTreeText.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace vlgs::posix {

class RegistryFile {
  public:
    RegistryFile(std::string path, RegistryHive hive);
    /// Leaves the file on the disk and, unless it is large, without additions.
    ~RegistryFile();
    RegistryFile(const RegistryFile&) = delete;
    RegistryFile& operator=(const RegistryFile&) = delete;

    /// Reads what others have changed; one look at the file's state when that is nothing.
    RegistryStatus refresh();

    /// As it was at the last refresh.
    RegistryKeyNode& root() noexcept { return root_; }
    bool isWritable() const noexcept;

    /// Looks at the tree and either writes the lines of a change (none: there is nothing to change) or
    /// answers why it cannot be. Called twice, the second time while nobody else can change the hive.
    using Describe = std::function<RegistryStatus(RegistryKeyNode& root, RegistryTextWriter& writer)>;
    RegistryStatus change(const Describe& describe);

  private:
    void finishRewriting() const;
    RegistryStatus read(int file);
    RegistryStatus readUnlocked(int file);
    bool readOn(int file, const struct stat& status);
    RegistryStatus readWhole(int file, const struct stat& status);
    void see(int file, const struct stat& status, std::string_view bytes);
    void forget();

    int create();
    RegistryStatus write(int file, const std::u16string& lines);
    int add(int file, const std::u16string& lines);
    int replace(int file);
    int rewrite(int file);
    void take(int file, const std::string& bytes);
    int putOnDisk(int file);
    void tidy();

    std::string path_;
    RegistryHive hive_;
    RegistryKeyNode root_;

    /// The file that was read, which keeps its number from being used again; none when there is no file.
    Descriptor seen_;
    struct stat seenStatus_ {};
    RegistryStatus status_ = RegistryStatus::Success;
    std::size_t end_ = 0;
    std::size_t additions_ = 0;
    /// The last bytes before the end, by which a file is known that was only added to.
    std::string lastBytes_;
    bool takesAdditions_ = false;

    bool changed_ = false;
    std::chrono::steady_clock::time_point onDisk_{};
};

} // namespace vlgs::posix
