// SPDX-License-Identifier: MIT
// The name that somebody who mistyped one most likely meant.
#pragma once

#include <cstddef>
#include <string_view>

namespace vlgs {

/// `NearestName near(u"Ekho"); for (…) near.offer(name); near.found()` gives "Echo".
class NearestName {
  public:
    /// REQUIRES: `wanted` outlives this.
    explicit NearestName(std::u16string_view wanted) noexcept;
    /// Names are ASCII; case makes no difference. REQUIRES: `name` outlives what `found` gives.
    void offer(std::string_view name) noexcept;
    /// The offered name with the fewest letters to add, drop, replace or exchange with their neighbour;
    /// empty when that is more than a third of the letters.
    std::string_view found() const noexcept { return found_; }

  private:
    std::u16string_view wanted_;
    std::string_view found_;
    std::size_t best_;
};

} // namespace vlgs
