// SPDX-License-Identifier: MIT
// The words of a command line: options, values that stand in files, names that were nearly right.
#pragma once

#include "base/String.h"

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vlgs::cli {

/// A command's options and its other words. What stands behind "--" is no option.
///
///     const Words words("ini get", given, {"--json", "--default="});
class Words {
  public:
    /// `known` are the options; the value of one that ends in "=" follows in the same word or, where the name
    /// does not begin with "--", as the next word. Raises Misuse for another word that begins with "--".
    Words(std::string_view command, std::span<const std::string_view> given,
          std::initializer_list<std::string_view> known);

    bool has(std::string_view option) const { return value(option).has_value(); }
    /// The value of an option that was given, "" for one that takes none.
    std::optional<std::string_view> value(std::string_view option) const;

    const std::vector<std::string_view>& plain() const noexcept { return plain_; }
    std::string_view operator[](std::size_t i) const { return plain_[i]; }
    std::size_t count() const noexcept { return plain_.size(); }
    /// Raises Misuse with the words that the command needs.
    void need(std::size_t least, std::size_t most, std::string_view words) const;

  private:
    std::string command_;
    std::vector<std::pair<std::string_view, std::string_view>> options_;
    std::vector<std::string_view> plain_;
};

/// The value that a word stands for: the content of a file for "@FILE", standard input for "@-", both
/// without their last line end; "@TEXT" for "@@TEXT"; else the word. A text in UTF-8. Raises what reading
/// raises.
String valueOf(std::string_view word);

/// One of the commands behind a command.
struct Subcommand {
    std::string_view name;
    int (*run)(std::span<const std::string_view>);
};
/// Runs the one that the first word names, with the others; Misuse when it names none.
int runSubcommand(std::string_view command, std::span<const std::string_view> words,
                  std::initializer_list<Subcommand> subcommands);

/// "; did you mean NAME?", or "" when no name is near.
std::string nearest(std::string_view wanted, std::span<const std::string_view> names);

} // namespace vlgs::cli
