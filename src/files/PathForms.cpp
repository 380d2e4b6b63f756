// SPDX-License-Identifier: MIT
#include "files/PathForms.h"

#include "automation/Convert.h"
#include "base/Ascii.h"
#include "base/Error.h"
#include "base/Text.h"
#include "frame/Errors.h"

#include <string>
#include <vector>

namespace vlgs {

namespace {

constexpr std::u16string_view uncStart = u"\\\\";

} // namespace

bool g_IsUNCPathFormat(std::u16string_view sValue) noexcept {
    return trimLeft(sValue).starts_with(uncStart);
}

bool g_IsStandardPathFormat(std::u16string_view sValue) noexcept {
    const auto value = trimLeft(sValue);
    return value.size() >= 2 && ascii::isLetter(value[0]) && value[1] == u':';
}

bool g_IsRelativePathFormat(std::u16string_view sValue) noexcept {
    return !g_IsUNCPathFormat(sValue) && !g_IsStandardPathFormat(sValue);
}

String g_PathVolume(std::u16string_view path, String* remainder) {
    const auto trimmed = trim(path);
    String volume;
    String rest;
    const auto take = [&](std::u16string_view start, std::int32_t volumeLevels) {
        const Array levels = g_ExtractPathAllLevels(trimmed);
        if (levels.upper() + 1 < volumeLevels)
            return;
        const String built = g_BuildPath(levels, 0, volumeLevels - 1);
        auto name = trim(built);
        if (name.ends_with(u'\\'))
            name.remove_suffix(1);
        volume = concat(start, name, u"\\");
        if (levels.upper() >= volumeLevels)
            rest = g_BuildPath(levels, volumeLevels);
    };
    if (g_IsStandardPathFormat(trimmed))
        take(u"", 1);
    else if (g_IsUNCPathFormat(trimmed))
        take(uncStart, 2);
    else
        rest = trimmed.starts_with(u'\\') ? trimmed.substr(1) : trimmed;
    if (remainder)
        *remainder = std::move(rest);
    return volume;
}

ArrayOf<String> g_ExtractPathAllLevels(std::u16string_view sPath) {
    std::vector<String> levels;
    for (const auto piece : split(trim(sPath), u"\\"))
        if (const auto level = trim(piece); !level.empty())
            levels.emplace_back(level);
    if (levels.empty())
        levels.emplace_back();
    return Array::ofStrings(std::move(levels));
}

ArrayOf<String> g_ExtractPathDirLevels(std::u16string_view sPath) {
    String remainder;
    g_PathVolume(sPath, &remainder);
    return g_ExtractPathAllLevels(remainder);
}

String g_BuildDirBackupPrefix(std::int32_t lNumber) {
    constexpr std::u16string_view step = u"..\\";
    const auto count = lNumber < 1 ? 0 : static_cast<std::size_t>(lNumber);
    return String::build(count * step.size(), [&](char16_t* to) {
        for (std::size_t i = 0; i < count; ++i)
            to += step.copy(to, step.size());
    });
}

String g_BuildPath(const Variant& vArray, std::int32_t lStart, std::int32_t lStop) {
    if (!vArray.isArray())
        return {};
    return underSource(u"VlGeneralServices.modFiles.g_BuildPath", [&]() -> String {
        const Array& levels = vArray.array();
        if (levels.rank() != 1)
            raise(RunTimeError::SubscriptOutOfRange);
        const std::int64_t first = lStart == -1 ? levels.lower() : lStart;
        const std::int64_t last = lStop == -1 ? levels.upper() : lStop;
        std::u16string path;
        for (std::int64_t i = first; i <= last; ++i) {
            const String level = toText(levels.get(static_cast<std::int32_t>(i)));
            path += level;
            if (!level.empty() && i != levels.upper())
                path += u'\\';
        }
        return path;
    });
}

} // namespace vlgs
