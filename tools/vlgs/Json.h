// SPDX-License-Identifier: MIT
// JSON on standard output. Its forms are told in docs/shell.md; programs rely on them.
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// Writes one JSON text and its line end.
///
///     Json json(out);
///     json.object([&] { json.field("name", name); });
///     json.end();
class Json {
  public:
    /// `Entries` gives each entry of the outermost list or object a line of its own.
    enum class Layout { Line, Entries };
    explicit Json(std::ostream& out, Layout layout = Layout::Line) : out_(out), layout_(layout) {}

    template <std::invocable Body>
    void object(Body&& body) {
        open('{');
        body();
        close('}');
    }
    template <std::invocable Body>
    void array(Body&& body) {
        open('[');
        body();
        close(']');
    }

    /// The name of the value that comes next.
    void name(std::u16string_view name);
    void name(std::string_view utf8);

    void value(std::u16string_view text);
    void value(std::string_view utf8);
    void value(const char* utf8) { value(std::string_view(utf8)); }
    void value(std::same_as<bool> auto truth) { raw(truth ? "true" : "false"); }
    void null() { raw("null"); }
    /// A number as its digits stand.
    void raw(std::string_view digits);

    template <class Value>
    void field(std::string_view key, const Value& content) {
        name(key);
        value(content);
    }

    /// Ends the line.
    void end();

  private:
    void open(char bracket);
    void close(char bracket);
    void separate();

    std::ostream& out_;
    Layout layout_;
    std::vector<bool> hasEntries_; // of each open bracket
    bool named_ = false;
};

} // namespace vlgs::cli
