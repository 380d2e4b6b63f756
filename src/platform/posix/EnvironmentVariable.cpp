// SPDX-License-Identifier: MIT
#include "platform/Environment.h"

#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/Locale.h"
#include "platform/posix/UserEnvironment.h"
#include "platform/posix/UserFolders.h"

namespace vlgs {

std::optional<String> environmentVariable(std::u16string_view name) {
    if (name.find(u'\0') != name.npos)
        return std::nullopt;
    const auto value = posix::trustedVariable(String(name).toUtf8().c_str());
    return value ? std::optional(String::fromUtf8(*value)) : std::nullopt;
}

String unknownSettings() {
    const auto& set = userEnvironment();
    String lines;
    const auto tell = [&](std::u16string_view variable, const std::string& value, std::u16string_view used) {
        lines += concat(lines.empty() ? u"" : u"\n", variable, u"=", String::fromUtf8(value),
                        u" is not known here; ", used, u" is used");
    };
    if (!Locale::isKnown(set.locale))
        tell(u"VLGS_LOCALE", set.locale, Locale::user().name());
    if (!set.codePage.empty() && !CodePage::named(set.codePage))
        tell(u"VLGS_CODEPAGE", set.codePage, concat(u"code page ", decimal(CodePage::system().number())));
    return lines;
}

} // namespace vlgs
