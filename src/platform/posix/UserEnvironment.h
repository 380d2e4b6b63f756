// SPDX-License-Identifier: MIT
// The environment variables that tell the user's locale, languages and code page.
#pragma once

#include <cstdint>
#include <string>

namespace vlgs {

/// Values of the variables, empty where one is not set.
struct UserEnvironment {
    std::string codePage;   // VLGS_CODEPAGE
    std::string locale;     // VLGS_LOCALE
    std::string all;        // LC_ALL
    std::string characters; // LC_CTYPE
    std::string time;       // LC_TIME
    std::string numeric;    // LC_NUMERIC
    std::string messages;   // LC_MESSAGES
    std::string language;   // LANG
    std::string languages;  // LANGUAGE

    /// Grows with every change, and is never 0: what was derived from the values is still good while the
    /// generation is the same.
    std::uint32_t generation = 0;
};

/// The present values. One pass over the environment; the reference is to the calling thread's own copy.
const UserEnvironment& userEnvironment();

} // namespace vlgs
