// Runs a test under another locale of the user: `UserLocale german("de-DE");`
#pragma once

#include <cstdlib>
#include <string>

namespace vlgs::test {

#ifndef _WIN32
inline constexpr bool canChooseLocale = true;

class UserLocale {
  public:
    explicit UserLocale(const char* name) {
        if (const char* before = std::getenv("VLGS_LOCALE"))
            before_ = before;
        setenv("VLGS_LOCALE", name, 1);
    }
    ~UserLocale() { before_.empty() ? unsetenv("VLGS_LOCALE") : setenv("VLGS_LOCALE", before_.c_str(), 1); }
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;

  private:
    std::string before_;
};
#else
// The operating system's own setting answers there, and no test changes it.
inline constexpr bool canChooseLocale = false;
struct UserLocale {
    explicit UserLocale(const char*) {}
};
#endif

} // namespace vlgs::test
