// Runs a test under another locale of the user: `UserLocale german("de-DE");`
#pragma once

#include "support/Setting.h"

namespace vlgs::test {

#ifndef _WIN32
inline constexpr bool canChooseLocale = true;

struct UserLocale : Setting {
    explicit UserLocale(const char* name) : Setting("VLGS_LOCALE", name) {}
};
#else
// The operating system's own setting answers there, and no test changes it.
inline constexpr bool canChooseLocale = false;
struct UserLocale {
    explicit UserLocale(const char*) {}
};
#endif

} // namespace vlgs::test
