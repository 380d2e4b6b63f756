// SPDX-License-Identifier: MIT
// Who may do what with a file.
#pragma once

#include "platform/windows/Host.h"

#include <memory>

namespace vlgs::windows {

/// Security attributes that admit the present user and nobody else.
class UserOnly {
  public:
    UserOnly();
    ~UserOnly();
    SECURITY_ATTRIBUTES* get() noexcept;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// Gives a file the access rules of another; what the user may not change stays as it is.
void copyAccess(const wchar_t* from, const wchar_t* to);

} // namespace vlgs::windows
