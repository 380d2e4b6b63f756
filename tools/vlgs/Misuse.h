// SPDX-License-Identifier: MIT
// A command line that cannot be carried out, with what would have been right.
#pragma once

#include <stdexcept>

namespace vlgs::cli {

class Misuse : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace vlgs::cli
