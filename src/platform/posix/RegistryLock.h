// SPDX-License-Identifier: MIT
// Who may read or change a hive's file at present.
#pragma once

#include "platform/posix/Descriptor.h"

#include <chrono>
#include <string>

namespace vlgs::posix {

/// The open file of a path, locked for as long as this lives. The lock belongs to this open file, hence it
/// works between threads too, and ends with the process.
class LockedFile {
  public:
    LockedFile(const std::string& path, int flags, int operation, std::chrono::milliseconds wait);
    ~LockedFile();
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    explicit operator bool() const noexcept { return static_cast<bool>(file_); }
    int get() const noexcept { return file_.get(); }
    int error() const noexcept { return error_; }
    bool locked() const noexcept { return locked_; }

  private:
    Descriptor file_;
    int error_ = 0;
    bool locked_ = false;
};

/// A hive's file for reading. It is open also when a writer does not let go (`locked`).
class ReaderLock : public LockedFile {
  public:
    explicit ReaderLock(const std::string& hive);
};

/// A hive's file for a change. Those who may write it exclude each other by a lock file, which nobody can
/// lock who may only read the hive; of the hive's own lock readers are only asked to let go. Where there can
/// be no lock file, the hive's own lock has to do.
class WriterLock {
  public:
    explicit WriterLock(const std::string& hive);
    ~WriterLock();
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;

    int get() const noexcept { return file_.get(); }
    /// 0 when the hive may be changed, or the value of errno: EBUSY when others do not let go.
    int error() const noexcept;

  private:
    Descriptor lock_;
    bool taken_;
    LockedFile file_;
};

} // namespace vlgs::posix
