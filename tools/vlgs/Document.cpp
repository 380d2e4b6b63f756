// SPDX-License-Identifier: MIT
#include "Document.h"

#include "HostText.h"
#include "InputFile.h"
#include "Words.h"
#include "base/Error.h"
#include "base/Text.h"
#include "ini/INIText.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <algorithm>

namespace vlgs::cli {

namespace {

[[noreturn]] void raiseAbsent(std::u16string_view what, const std::string& near) {
    throw Error(static_cast<std::int32_t>(RunTimeError::SubscriptOutOfRange), {},
                concat(u"There is no ", what, String::fromUtf8(near)));
}

// The nearest of names that `nameOf(i)` gives, i from 0 below `count`.
template <class NameOf>
std::string nearestName(const String& wanted, std::size_t count, NameOf&& nameOf) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i)
        names.push_back(toHost(nameOf(i)));
    const std::vector<std::string_view> views(names.begin(), names.end());
    return nearest(toHost(wanted), views);
}

} // namespace

Ref<INIFile> readDocument(std::string_view file, Absent absent) {
    return readNamed(file, [&](const String& path) {
        auto document = make<INIFile>();
        document->SetFullPath(path);
        if (absent == Absent::Fails || folderExists(path))
            requireFile(path);
        if (fileExists(path))
            readFileInto(*document, path);
        return document;
    });
}

void saveDocument(INIFile& document, bool dropLines) {
    const String path = document.FullPath();
    if (!dropLines && fileExists(path)) {
        const auto findings = checkLines(path);
        const auto lost = std::ranges::count_if(findings, &Finding::isLost);
        if (lost != 0) {
            const auto& first = *std::ranges::find_if(findings, &Finding::isLost);
            throw Error(static_cast<std::int32_t>(RunTimeError::PermissionDenied), {},
                        concat(u"Saving would drop ", decimal(lost), lost == 1 ? u" line" : u" lines",
                               u" of the file, the first one line ",
                               decimal(static_cast<std::int64_t>(first.line)), u" (",
                               String::fromUtf8(first.what), u"); --drop-lines saves without"));
        }
    }
    document.Save();
}

bool hasSection(const INIFile& document, std::u16string_view name) {
    return document.sections() && document.sections()->property(name);
}

std::vector<SectionView> sectionsOf(const INIFile& document) {
    std::vector<SectionView> result;
    Collection* const sections = document.sections();
    const std::int32_t count = sections ? sections->Count() : 0;
    for (std::int32_t i = 1; i <= count; ++i)
        if (const Property* section = sections->property(Variant(i)))
            result.push_back({section->name(), document.SectionKeys(Variant(i))});
    return result;
}

void writeKeys(Json& json, const SectionView& section) {
    json.object([&] {
        for (std::int32_t i = 1; i <= section.count(); ++i) {
            json.name(section.key(i).name());
            json.value(section.key(i).value().text());
        }
    });
}

void writeDocument(Json& json, const INIFile& document) {
    json.object([&] {
        for (const auto& section : sectionsOf(document)) {
            json.name(section.name);
            writeKeys(json, section);
        }
    });
}

SectionView sectionNamed(const INIFile& document, const String& name) {
    if (Collection* sections = document.sections())
        if (const Property* section = sections->property(name.view()))
            return {section->name(), document.SectionKeys(Variant(name))};
    const auto known = sectionsOf(document);
    raiseAbsent(concat(u"section [", name, u"]"),
                nearestName(name, known.size(), [&](std::size_t i) { return known[i].name; }));
}

String keyNamed(const SectionView& section, const String& name) {
    if (section.keys)
        if (const Property* key = section.keys->property(name.view()))
            return key->value().text();
    raiseAbsent(concat(u"key ", name, u" in section [", section.name, u"]"),
                nearestName(name, static_cast<std::size_t>(section.count()), [&](std::size_t i) {
                    return section.key(static_cast<std::int32_t>(i) + 1).name();
                }));
}

} // namespace vlgs::cli
