// SPDX-License-Identifier: MIT
#include "base/NearestName.h"

#include "base/Ascii.h"

#include <algorithm>
#include <array>

namespace vlgs {

namespace {

constexpr std::size_t longest = 64;

/// The number of steps from one name to the other. REQUIRES: neither is longer than `longest`.
std::size_t distance(std::u16string_view a, std::string_view b) noexcept {
    std::array<std::array<std::size_t, longest + 1>, 3> rows;
    const auto row = [&](std::size_t i) -> auto& {
        return rows[i % rows.size()];
    };
    const auto left = [&](std::size_t i) { return ascii::toLower(a[i - 1]); };
    const auto above = [&](std::size_t j) { return ascii::toLower(static_cast<unsigned char>(b[j - 1])); };
    for (std::size_t j = 0; j <= b.size(); ++j)
        row(0)[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row(i)[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            std::size_t steps = row(i - 1)[j - 1] + (left(i) == above(j) ? 0 : 1);
            steps = std::min({steps, row(i - 1)[j] + 1, row(i)[j - 1] + 1});
            if (i > 1 && j > 1 && left(i) == above(j - 1) && left(i - 1) == above(j))
                steps = std::min(steps, row(i - 2)[j - 2] + 1);
            row(i)[j] = steps;
        }
    }
    return row(a.size())[b.size()];
}

} // namespace

NearestName::NearestName(std::u16string_view wanted) noexcept
    : wanted_(wanted), best_(wanted.size() / 3 + 1) {}

void NearestName::offer(std::string_view name) noexcept {
    if (wanted_.size() > longest || name.size() > longest)
        return;
    if (const std::size_t steps = distance(wanted_, name); steps < best_) {
        best_ = steps;
        found_ = name;
    }
}

} // namespace vlgs
