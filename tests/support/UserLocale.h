// SPDX-License-Identifier: MIT
// Runs a test under another locale of the user: `UserLocale german("de-DE");`
#pragma once

#include "support/Setting.h"

namespace vlgs::test {

#ifndef _WIN32
struct UserLocale : Setting {
    explicit UserLocale(const char* name) : Setting("VLGS_LOCALE", name) {}
};
#else
// The operating system's own setting answers there, and no test changes it; tests that need another locale
// than American English stand in tests/com/left_out.txt.
struct UserLocale {
    explicit UserLocale(const char*) {}
};
#endif

} // namespace vlgs::test
