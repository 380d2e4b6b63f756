#include "platform/Environment.h"

#include <cstdlib>

namespace vlgs {

std::optional<String> environmentVariable(std::u16string_view name) {
    if (name.find(u'\0') != name.npos)
        return std::nullopt;
    const char* value = std::getenv(String(name).toUtf8().c_str());
    return value ? std::optional(String::fromUtf8(value)) : std::nullopt;
}

} // namespace vlgs
