// SPDX-License-Identifier: MIT
#include "platform/posix/SignalShield.h"

#include <array>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vlgs::posix {

namespace {

sigset_t only(int signal) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    return set;
}

bool isPending(int signal) {
    sigset_t pending;
    return ::sigpending(&pending) == 0 && sigismember(&pending, signal) == 1;
}

bool comesFromThisProcess(const siginfo_t& info) {
    return info.si_code <= 0 && info.si_pid == ::getpid();
}

} // namespace

SizeLimitShield::SizeLimitShield() noexcept : SignalShield(SIGXFSZ, comesFromThisProcess) {}
PipeShield::PipeShield() noexcept : SignalShield(SIGPIPE, comesFromThisProcess) {}

SignalShield::SignalShield(int signal, Ours ours) noexcept : signal_(signal), ours_(ours) {
    const auto set = only(signal);
    ::pthread_sigmask(SIG_BLOCK, &set, &mask_);
    pendingBefore_ = isPending(signal);
}

SignalShield::~SignalShield() {
    // A signal below the real-time ones is pending once however often it was sent: one that was there before
    // is the program's own and ours has gone into it.
    if (isPending(signal_) && (signal_ >= SIGRTMIN || !pendingBefore_))
        takeOurs();
    ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
}

void SignalShield::takeOurs() const noexcept {
    const auto set = only(signal_);
    const timespec now{};
    std::array<siginfo_t, 32> foreign;
    std::size_t count = 0;
    siginfo_t info;
    while (count < foreign.size() && ::sigtimedwait(&set, &info, &now) == signal_)
        if (!ours_(info))
            foreign[count++] = info;
    for (std::size_t i = 0; i < count; ++i)
        ::syscall(SYS_rt_tgsigqueueinfo, ::getpid(), ::gettid(), signal_, &foreign[i]);
}

} // namespace vlgs::posix
