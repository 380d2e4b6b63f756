// SPDX-License-Identifier: MIT
// What a fuzz target makes of its bytes: choices first, texts behind them.
#pragma once

#include "base/Error.h"
#include "base/String.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vlgs::fuzz {

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const noexcept { return rest_.empty(); }

    /// A number below `end`.
    std::size_t below(std::size_t end) {
        if (rest_.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return byte % end;
    }
    /// The bytes up to the next "|", or all that are left.
    std::string_view bytes() {
        const auto end = std::min(rest_.find('|'), rest_.size());
        const auto piece = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return piece;
    }
    std::string_view rest() const noexcept { return rest_; }
    String text() { return String::fromUtf8(bytes()); }

  private:
    std::string_view rest_;
};

/// Does what may raise an `Error`, and nothing else; whether it did not.
template <class Action>
bool succeeds(Action&& action) {
    try {
        action();
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace vlgs::fuzz
