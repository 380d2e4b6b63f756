// SPDX-License-Identifier: MIT
// Registry files of any content: what is read from one is written, read again and found the same, also where
// a part of it comes as an addition.
// Covers: platform/RegistryText* platform/posix/RegistryTree*
#include "platform/posix/RegistryTreeText.h"

#include <cstdlib>
#include <iterator>
#include <string>

namespace {

using namespace vlgs;
using namespace vlgs::posix;

constexpr auto hive = RegistryHive::CurrentUser;

// Bytes from 0x80 on stand for these, so that random input has keys and values in it.
constexpr std::u16string_view fragments[] = {
    u"[HKEY_CURRENT_USER]\r\n",
    u"[HKCU\\a\\b]\r\n",
    u"[-HKEY_CURRENT_USER\\a]\r\n",
    u"[HKEY_CURRENT_USER\\",
    u"]\r\n",
    u"\"n\"=",
    u"@=",
    u"\"",
    u"\\\"",
    u"\\\r\n",
    u"\"text\"\r\n",
    u"dword:",
    u"hex:",
    u"hex(7):61,00,00,00\r\n",
    u"hex(",
    u"0a,",
    u"-\r\n",
    u"\r\n\r\n",
    u";+\r\n",
    u"\xF05C",
    u"\n",
};

std::u16string expand(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    for (std::size_t i = 0; i < size; ++i)
        if (data[i] < 0x80)
            text += static_cast<char16_t>(data[i]);
        else
            text += fragments[data[i] % std::size(fragments)];
    return text;
}

std::u16string normal(std::u16string_view text, bool isOldForm) {
    RegistryKeyNode root(registryHiveName(hive));
    readRegistryTree(text, isOldForm, hive, root);
    return registryTextOf(hive, root);
}

void check(bool holds) {
    if (!holds)
        std::abort();
}

/// The lines of a text that was written, as an addition behind another one: all or nothing of it counts.
void checkAddition(const std::u16string& first, const std::u16string& written) {
    auto lines = written;
    for (std::size_t at = 0; (at = lines.find(u"\r\n\r\n", at)) != lines.npos;)
        lines.erase(at, 2);
    const auto addition = registryAddition(lines);
    RegistryKeyNode root(registryHiveName(hive));
    readRegistryTree(first + addition, false, hive, root);
    RegistryKeyNode both(registryHiveName(hive));
    readRegistryTree(first + written, false, hive, both);
    check(registryTextOf(hive, root) == registryTextOf(hive, both));
    const auto cut = first + addition.substr(0, addition.size() / 2);
    RegistryKeyNode part(registryHiveName(hive));
    check(readRegistryTree(cut, false, hive, part).end == first.size());
    check(registryTextOf(hive, part) == first);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    for (const auto* const heading : {"", "REGEDIT4\r\n", "Windows Registry Editor Version 5.00\r\n"})
        if (const auto file = decodeRegistryFile(heading + bytes))
            normal(file->text, file->isOldForm);
    const auto text = expand(data, size);
    for (const bool isOldForm : {false, true}) {
        const auto written = normal(text, isOldForm);
        check(normal(written, false) == written);
        checkAddition(normal(text.substr(text.size() / 2), isOldForm), written);
    }
    return 0;
}
