// Processes that are killed at work or have no rights.
#pragma once

#include "Scratch.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace vlgs::test {

inline constexpr uid_t nobody = 65534;

/// Gives up the rights of the administrator, in a process of its own.
inline bool becomeNobody() {
    return ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
}

/// Does some work in a process of its own and kills that after a while.
template <class Work>
void killAtWork(std::chrono::microseconds after, const Work& work) {
    const pid_t child = start(work);
    std::this_thread::sleep_for(after);
    ::kill(child, SIGKILL);
    EXPECT_EQ(finish(child), -1);
}

} // namespace vlgs::test
