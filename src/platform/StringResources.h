// SPDX-License-Identifier: MIT
// The string resources of a resource file: texts by number, at most 65535.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace vlgs {

/// The strings of one resource file. `path` names the library file that holds them on Windows,
/// "C:\…\VlComRes.dll". On hosts without such files they stand in text files named after it,
/// "VlComRes.en.txt" and those that it includes, in the folder itself, in its `resources`, or, for the folder
/// of the library, where `resourcePath` finds them; `resources/README.md` describes their form. The library's
/// own are also built into it there, for where a file of them is not found.
class StringResources {
  public:
    /// Raises 53 with the name of the file when there is no such resource file.
    static std::unique_ptr<StringResources> open(std::u16string_view path);

    StringResources(const StringResources&) = delete;
    StringResources& operator=(const StringResources&) = delete;
    virtual ~StringResources() = default;

    /// The text of a number, nothing when the file has none. Raises 53 when a file that is included is not
    /// there.
    virtual std::optional<String> load(std::int32_t number) = 0;

  protected:
    StringResources() = default;
    [[noreturn]] static void raiseMissing(std::u16string_view file);
};

} // namespace vlgs
