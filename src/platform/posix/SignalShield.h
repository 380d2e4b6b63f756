// SPDX-License-Identifier: MIT
// Keeps a signal that the library's own work may cause away from the program that uses it.
#pragma once

#include <csignal>

namespace vlgs::posix {

/// While it lives, a signal does not interrupt this thread; when it ends, those that `ours` knows are gone
/// and the others are delivered as if nothing had been.
class SignalShield {
  public:
    using Ours = bool (*)(const siginfo_t&);

    SignalShield(int signal, Ours ours) noexcept;
    ~SignalShield();
    SignalShield(const SignalShield&) = delete;
    SignalShield& operator=(const SignalShield&) = delete;

  private:
    void takeOurs() const noexcept;

    int signal_;
    Ours ours_;
    bool pendingBefore_;
    sigset_t mask_;
};

/// For work that writes: a file size limit is answered by a signal as well as by an error, and the error is
/// what the caller gets.
struct SizeLimitShield : SignalShield {
    SizeLimitShield() noexcept;
};

/// The same for a pipe whose reader has gone.
struct PipeShield : SignalShield {
    PipeShield() noexcept;
};

} // namespace vlgs::posix
