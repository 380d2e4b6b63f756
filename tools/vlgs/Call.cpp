// SPDX-License-Identifier: MIT
#include "Call.h"

#include "Chain.h"
#include "Misuse.h"
#include "Print.h"

#include <iostream>
#include <string>
#include <vector>

namespace vlgs::cli {

void call(std::span<const std::string_view> words) {
    bool json = false;
    std::vector<std::string_view> chain;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--" && !chain.empty()) {
            chain.insert(chain.end(), words.begin() + static_cast<std::ptrdiff_t>(i), words.end());
            break;
        }
        if (words[i] == "--json")
            json = true;
        else if (chain.empty() && words[i].starts_with("-"))
            throw Misuse("call knows no option " + std::string(words[i]) + ", only --json");
        else
            chain.push_back(words[i]);
    }
    if (chain.empty())
        throw Misuse("call needs a member: vlgs call CLASS.MEMBER [ARG...] [NAME=VALUE...]");
    const auto result = runChain(chainWords(chain));
    if (json)
        printJson(std::cout, result.value, result.arguments());
    else
        print(std::cout, result.value);
}

} // namespace vlgs::cli
