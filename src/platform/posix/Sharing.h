// SPDX-License-Identifier: MIT
// Who else uses an open file.
//
// A claim is a lock of the open file description (flock), so it holds between any two opens wherever they
// were made, and other opens and closes of the file leave it alone. A lease tells whether anybody at all has
// the file open; it is taken for a moment only, because a lasting one would stop programs that open the file.
#pragma once

#include "platform/posix/SignalShield.h"

#include <string>

namespace vlgs::posix {

enum class Claim {
    /// Together with other claims of this kind.
    Shared,
    Sole,
};

enum class ClaimResult {
    Taken,
    Refused,
    /// The file system knows no claims, hence nobody has one.
    Unsupported,
};

/// Savers have a sole claim for as long as saving takes. Shared claims last and are never waited for.
enum class Waiting { None, ForSavers };

/// Claims an open file.
ClaimResult claim(int file, Claim kind, Waiting waiting) noexcept;

/// The time that something short by others may take.
void waitBriefly();

/// Gives up a claim at once, also when a process that was just forked still has the file.
void disclaim(int file) noexcept;

/// A moment in which nobody else can open a file, or open it for writing.
class Lease {
  public:
    /// Sole: somebody else has the file open. Shared: somebody has it open for writing; the file must be open
    /// for reading only.
    Lease(int file, Claim kind) noexcept;
    ~Lease();
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    /// Whether somebody has the file open; false where this cannot be told.
    bool refused() const noexcept { return refused_; }

  private:
    SignalShield shield_;
    int file_;
    bool taken_ = false;
    bool refused_ = false;
};

/// Whether an open file is still the one of this host path, links followed or not.
bool isStillAt(int file, const std::string& path, bool followLinks = true) noexcept;

} // namespace vlgs::posix
