// SPDX-License-Identifier: MIT
// What tests use of a POSIX host, where there is none; every test file includes it first. There is no second
// process: a test that starts one cannot run here (tests/com/left_out.txt).
#pragma once

#include <cstdlib>
#include <process.h>
#include <random>
#include <stdexcept>
#include <string>

#include <direct.h>

using uid_t = int;

extern "C" __declspec(dllimport) int __stdcall SetEnvironmentVariableA(const char*, const char*);

inline int setenv(const char* name, const char* value, int) {
    _putenv_s(name, value);
    return SetEnvironmentVariableA(name, value) ? 0 : -1;
}
inline int unsetenv(const char* name) {
    _putenv_s(name, "");
    SetEnvironmentVariableA(name, nullptr);
    return 0;
}
/// Makes a folder of a new name from a pattern that ends in XXXXXX.
inline char* mkdtemp(char* pattern) {
    static std::mt19937 random{std::random_device()()};
    std::string name(pattern);
    for (std::size_t i = name.size() - 6; i < name.size(); ++i)
        pattern[i] = static_cast<char>('a' + random() % 26);
    return _mkdir(pattern) == 0 ? pattern : nullptr;
}
inline int fork() {
    throw std::logic_error("no second process here");
}
inline int geteuid() {
    return 1000;
}
