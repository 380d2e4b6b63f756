// SPDX-License-Identifier: MIT
// Processes that are killed at work or have no rights.
#pragma once

#include "Scratch.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
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

/// The recovery copy that a process leaves which dies while it writes a file in place; its path.
inline std::string leaveRecoveryCopy(const Scratch& state, const std::string& file, const std::string& before,
                                     const std::string& after) {
    struct stat status {};
    ::stat(file.c_str(), &status);
    char name[34];
    EXPECT_EQ(std::snprintf(name, sizeof name, "%016lx-%016lx", status.st_dev, status.st_ino), 33);
    const std::uint64_t sizes[] = {before.size(), after.size()};
    char head[sizeof sizes];
    std::memcpy(head, sizes, sizeof head);
    std::filesystem::create_directories(state.host("vlgs/recovery"));
    state.write("vlgs/recovery/" + std::string(name),
                "vlgs recovery 1\n" + std::string(head, sizeof head) + before + after);
    return state.host("vlgs/recovery/" + std::string(name));
}

} // namespace vlgs::test
