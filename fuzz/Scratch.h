// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace vlgs::fuzz {

/// A folder that goes with the process.
class Scratch {
  public:
    Scratch() { ::mkdtemp(name_.data()); }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(name_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string file(const char* name) const { return name_ + "/" + name; }
    void write(const char* name, std::string_view bytes) const {
        std::ofstream(file(name), std::ios::binary) << bytes;
    }

  private:
    std::string name_ = "/tmp/vlgs-fuzz-XXXXXX";
};

} // namespace vlgs::fuzz
