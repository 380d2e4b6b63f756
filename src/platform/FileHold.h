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

    /// Whether this object holds a file. In a forked child it does not.
    bool held() const noexcept;

    /// Closes the file; nothing happens when none is held.
    void release() noexcept;

    /// Lets the hold live on until the process ends, and holds nothing from here on.
    void abandon() noexcept;

  private:
    struct Open;
    explicit FileHold(std::unique_ptr<Open> open) noexcept;

    std::unique_ptr<Open> open_;
};

} // namespace vlgs
