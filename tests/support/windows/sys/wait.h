// SPDX-License-Identifier: MIT
// Waiting for a process that Host.h never starts.
#pragma once

#define WIFEXITED(status) ((void)(status), true)
#define WEXITSTATUS(status) (status)
inline int waitpid(long long, int*, int) {
    return -1;
}
