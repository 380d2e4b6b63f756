// SPDX-License-Identifier: MIT
// One editor of a document at a time, among the processes of the command line.
#pragma once

#include "base/String.h"

namespace vlgs::cli {

/// From reading a document to saving it nobody else edits it, so that no change is lost. Waits up to ten
/// seconds for another editor, and raises 70 then. Where the file system knows no such locks there is none.
class EditLock {
  public:
    explicit EditLock(const String& path);
    ~EditLock();
    EditLock(const EditLock&) = delete;
    EditLock& operator=(const EditLock&) = delete;

  private:
#ifdef _WIN32
    void* mutex_ = nullptr;
#else
    int folder_ = -1; // saving replaces the file, its folder stays
#endif
};

} // namespace vlgs::cli
