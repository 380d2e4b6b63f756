// SPDX-License-Identifier: MIT
// What an action raises, for tests: `EXPECT_EQ(errorOf([&] { files->Path(…); }), 76)`.
#pragma once

#include "base/Error.h"

#include <gtest/gtest.h>

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

/// The number of the error that an action raised, 0 for none.
template <class Action>
std::int32_t errorOf(Action&& action) {
    return raised(action).number;
}

/// Whether an action raises this number under this source, with a description that ends so:
/// `EXPECT_TRUE(raises(9, "A.B", "", [&] { files->BuildPath(…); }))`.
template <class Action>
testing::AssertionResult raises(std::int32_t number, std::string_view source, std::string_view ending,
                                Action&& action) {
    const Raised found = raised(action);
    if (found.number == number && found.source == source && found.description.ends_with(ending))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "raised " << found;
}

/// The number of the error that tells a message.
constexpr std::int32_t messageError(std::int32_t message) {
    return message + objectErrorBase;
}

} // namespace vlgs::test
