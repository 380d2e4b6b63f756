// SPDX-License-Identifier: MIT
// Texts between the library and the shell: UTF-8, where a byte that is no UTF-8 is U+DC80 to U+DCFF inside,
// as in the library's file names, so that every name of the host can be said and comes back as it was.
#pragma once

#include "base/String.h"

#include <string>
#include <string_view>

namespace vlgs::cli {

String fromHost(std::string_view bytes);
std::string toHost(std::u16string_view text);

} // namespace vlgs::cli
