// SPDX-License-Identifier: MIT
// What a word that is being typed can become.
#pragma once

#include "base/CaseFold.h"
#include "base/String.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

class Candidates {
  public:
    /// REQUIRES: `word` outlives this.
    explicit Candidates(std::string_view word) : word_(word), start_(String::fromUtf8(word)) {}

    std::string_view word() const noexcept { return word_; }

    /// Takes a name that begins as the word does, in any case.
    void offer(const std::string& name) {
        if (beginsSo(String::fromUtf8(name)))
            found_.insert(name);
    }
    std::vector<std::string> found() const { return {found_.begin(), found_.end()}; }

  private:
    bool beginsSo(std::u16string_view name) const {
        return equalIgnoringCase(name.substr(0, start_.length()), start_.view());
    }

    std::string_view word_;
    String start_;
    std::set<std::string> found_;
};

} // namespace vlgs::cli
