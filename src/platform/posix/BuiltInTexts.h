// SPDX-License-Identifier: MIT
// The files of the library's message texts as they were when it was built. cmake/BuiltInTexts.cmake writes
// the definition.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::posix {

struct BuiltInText {
    std::string_view file; // "VlComRes.en.txt"
    std::string_view content;
};

std::span<const BuiltInText> builtInTexts() noexcept;

} // namespace vlgs::posix
