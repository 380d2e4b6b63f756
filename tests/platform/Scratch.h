// SPDX-License-Identifier: MIT
// A folder of its own for a test, and work done in another process.
#pragma once

#include "base/String.h"
#include "platform/Volumes.h"
#include "support/Raised.h"
#include "support/Setting.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vlgs::test {

class Scratch {
  public:
    Scratch() {
        std::string name = (std::filesystem::temp_directory_path() / "vlgs-test-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string host(const std::string& name) const { return folder_ + "/" + name; }
    String path(const std::string& name) const { return fullPath(String::fromUtf8(host(name))); }
    const std::string& folder() const { return folder_; }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(host(name), std::ios::binary) << content;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(host(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_),
                                                      std::filesystem::directory_iterator()));
    }

  private:
    std::string folder_;
};

/// A forked process that does some work; its exit status is what the work answers.
template <class Work>
pid_t start(const Work& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        int status = 125;
        try {
            status = work();
        } catch (...) {
        }
        ::_exit(status);
    }
    return child;
}

/// The exit status of a process that ended by itself, -1 for one that was killed.
inline int finish(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// What some work answers in a process of its own.
template <class Work>
int elsewhere(const Work& work) {
    return finish(start(work));
}

} // namespace vlgs::test
