// SPDX-License-Identifier: MIT
// Holding a file open against others.
//
// On Windows the share modes of the open file do it. Elsewhere an advisory lock of the open file has the same
// effect on everything this library does, between processes and between two holders of one process, and on
// Linux a momentary lease tells whether a program that knows nothing of this library has the file open. A
// hold ends with its process however that ends, passes to no child process, outlives other opens and closes
// of the same file, is never taken on a file that was deleted or replaced meanwhile, and lets no signal reach
// anyone.
#pragma once

#include "base/String.h"

#include <memory>
#include <string_view>

namespace vlgs {

class FileHold {
  public:
    /// Holds nothing.
    FileHold() noexcept;
    FileHold(FileHold&& other) noexcept;
    FileHold& operator=(FileHold&& other) noexcept;
    /// Releases.
    ~FileHold();

    /// Opens a file for reading and keeps out writers, replacers and deleters; readers and other holds of
    /// this kind are welcome. 53 or 76 when it does not exist, 70 when it cannot be read or somebody writes
    /// it.
    static FileHold denyingWriters(std::u16string_view path);

    /// Opens an existing file for reading and writing and shares it with nobody. 70 when it is read-only or
    /// anybody has it open in any way; where the host cannot tell who has, when anybody holds it.
    static FileHold exclusive(std::u16string_view path);

    /// Makes a file with this content and holds it, as `denyingWriters` does, from the first moment that
    /// anybody can find it: nobody ever meets it unheld. Everybody can read it. 58 when anything of that name
    /// is there, 75 where the file system knows no holds, 70 when the folder takes no file. What is written
    /// need not be on the disk yet. Where the file system has no files without names, the content comes a
    /// moment after the file.
    static FileHold create(std::u16string_view path, std::string_view bytes);

    /// Whether this object holds a file. In a forked child it does not.
    bool held() const noexcept;

    /// Closes the file; nothing happens when none is held.
    void release() noexcept;

    /// Deletes the held file, which lies at `path`, and holds nothing from here on; programs that only read
    /// the file do not keep it. False when it stays: it is read-only, somebody else holds it too, or it was
    /// moved.
    bool releaseDeleting(std::u16string_view path) noexcept;

    /// Lets the hold live on until the process ends, and holds nothing from here on.
    void abandon() noexcept;

  private:
    struct Open;
    explicit FileHold(std::unique_ptr<Open> open) noexcept;

    std::unique_ptr<Open> open_;
};

} // namespace vlgs
