// SPDX-License-Identifier: MIT
#include "platform/posix/HostPath.h"

#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/UserFolders.h"

#include <optional>

namespace vlgs::posix {

namespace {

constexpr std::string_view standardTable = "C:=/";

[[noreturn]] void raiseMalformed(std::string_view entry) {
    throw Error(static_cast<std::int32_t>(RunTimeError::InvalidProcedureCall), String(),
                concat(u"VLGS_VOLUMES: \"", String::fromUtf8(entry),
                       u"\" is not LETTER:=HOSTFOLDER or LETTER:=HOSTFOLDER|\\\\server\\share, or repeats a "
                       u"letter"));
}

/// Whether a text is "\\server\share" and nothing more.
bool isShare(std::string_view text) {
    if (!text.starts_with("\\\\"))
        return false;
    const auto between = text.find('\\', 2);
    return between != text.npos && between > 2 && between + 1 < text.size() &&
           text.find('\\', between + 1) == text.npos;
}

std::string_view withoutFinal(char character, std::string_view text) {
    while (text.ends_with(character))
        text.remove_suffix(1);
    return text;
}

Volume parseEntry(std::string_view entry) {
    if (entry.size() < 4 || !ascii::isLetter(entry[0]) || entry.substr(1, 3) != ":=/")
        raiseMalformed(entry);
    const auto rest = entry.substr(3);
    const auto bar = rest.find('|');
    Volume volume;
    volume.letter = static_cast<char16_t>(entry[0] & ~0x20);
    volume.folder = withoutFinal('/', rest.substr(0, bar));
    volume.realFolder = withoutFinal('/', withoutLinks(volume.folder + "/"));
    if (bar != rest.npos) {
        const auto share = withoutFinal('\\', rest.substr(bar + 1));
        if (!isShare(share))
            raiseMalformed(entry);
        volume.share = String::fromUtf8(share);
    }
    return volume;
}

std::vector<Volume> parseTable(std::string_view table) {
    std::vector<Volume> volumes;
    while (!table.empty()) {
        const auto entry = table.substr(0, table.find(';'));
        table.remove_prefix(std::min(entry.size() + 1, table.size()));
        if (entry.empty())
            continue;
        auto volume = parseEntry(entry);
        for (const auto& other : volumes)
            if (other.letter == volume.letter)
                raiseMalformed(entry);
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

} // namespace

const std::vector<Volume>& volumes() {
    struct Parsed {
        std::string source;
        std::vector<Volume> volumes;
    };
    thread_local std::optional<Parsed> parsed;
    const auto setting = trustedVariable("VLGS_VOLUMES").value_or("");
    const std::string_view source = setting.empty() ? standardTable : std::string_view(setting);
    if (!parsed || parsed->source != source)
        parsed = Parsed{std::string(source), parseTable(source)};
    return parsed->volumes;
}

const Volume* findVolume(char16_t letter) {
    for (const auto& volume : volumes())
        if (foldCase(volume.letter) == foldCase(letter))
            return &volume;
    return nullptr;
}

const Volume* findShare(std::u16string_view share) {
    for (const auto& volume : volumes())
        if (!volume.share.empty() && equalIgnoringCase(volume.share, share))
            return &volume;
    return nullptr;
}

} // namespace vlgs::posix
