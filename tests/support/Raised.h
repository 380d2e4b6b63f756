// What an action raises, for tests: `EXPECT_EQ(raised([&] { files->Path(…); }).number, 76)`.
#pragma once

#include "base/Error.h"

#include <cstdint>
#include <ostream>
#include <string>

namespace vlgs::test {

/// The error that an action raised, texts in UTF-8; number 0 when it raised none.
struct Raised {
    std::int32_t number = 0;
    std::string source;
    std::string description;
    friend bool operator==(const Raised&, const Raised&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Raised& raised) {
        return out << raised.number << ' ' << raised.source << ": " << raised.description;
    }
};

template <class Action>
Raised raised(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return {error.number(), error.source().toUtf8(), error.description().toUtf8()};
    }
    return {};
}

} // namespace vlgs::test
