// SPDX-License-Identifier: MIT
#include "Reg.h"

#include "HostText.h"
#include "InputFile.h"
#include "Json.h"
#include "Misuse.h"
#include "RegistryText.h"
#include "Terminal.h"
#include "Words.h"
#include "base/Text.h"
#include "platform/Files.h"
#include "platform/RegistryText.h"
#include "platform/Volumes.h"

#include <iostream>
#include <utility>

namespace vlgs::cli {

namespace {

constexpr std::uint32_t readAccess = registryAccess::queryValue | registryAccess::enumerateSubKeys;
constexpr std::uint32_t writeAccess = readAccess | registryAccess::setValue | registryAccess::createSubKey;

std::vector<RegistryValue> valuesOf(const RegistryPath& path) {
    std::vector<RegistryValue> values;
    requireSuccess(path.open(readAccess).values(values), path.name());
    return values;
}

std::vector<String> keysOf(const RegistryPath& path) {
    std::vector<String> names;
    requireSuccess(path.open(readAccess).keyNames(names), path.name());
    return names;
}

/// Visits a key and all below it, a key before those below.
template <class Visit>
void walk(const RegistryPath& path, Visit&& visit) {
    std::vector<RegistryPath> open{path};
    while (!open.empty()) {
        const RegistryPath key = std::move(open.back());
        open.pop_back();
        visit(key);
        const auto names = keysOf(key);
        for (auto name = names.rbegin(); name != names.rend(); ++name)
            open.push_back(key.below(*name));
    }
}

std::string shownName(const String& name) {
    return name.empty() ? "(Default)" : toHost(name);
}

std::optional<String> valueName(const Words& words) {
    if (words.has("/ve"))
        return String();
    if (const auto name = words.value("/v="))
        return fromHost(*name);
    return std::nullopt;
}

void printValue(const RegistryValue& value) {
    std::cout << "    " << inColour(Colour::Name, shownName(value.name)) << "    "
              << typeName(value.data.type) << "    " << toHost(dataText(value.data)) << '\n';
}

void writeValues(Json& json, const std::vector<RegistryValue>& values) {
    json.object([&] {
        for (const auto& value : values) {
            json.name(value.name);
            json.object([&] {
                json.field("type", typeName(value.data.type));
                json.name("value");
                writeData(json, value.data);
            });
        }
    });
}

/// Raises the status of something that was done with a value of a key.
void requireValue(const RegistryPath& path, const String& name, RegistryStatus status) {
    std::vector<String> names;
    if (status == RegistryStatus::NotFound)
        for (const auto& value : valuesOf(path))
            names.push_back(value.name);
    requireSuccess(status, concat(String::fromUtf8(shownName(name)), u" in ", path.name()),
                   nearestOf(name, names));
}

std::vector<RegistryValue> wantedValues(const RegistryPath& path, const std::optional<String>& wanted) {
    if (!wanted)
        return valuesOf(path);
    RegistryValue value{*wanted, {}};
    requireValue(path, *wanted, path.open(readAccess).query(*wanted, value.data));
    return {value};
}

int query(std::span<const std::string_view> given) {
    const Words words("reg query", given, {"/v=", "/ve", "/s", "--json"});
    words.need(1, 1, "one key");
    const auto wanted = valueName(words);
    const RegistryPath path(fromHost(words[0]));
    const auto visit = [&](auto&& each) { words.has("/s") ? walk(path, each) : each(path); };
    if (words.has("--json")) {
        Json json(std::cout, Json::Layout::Entries);
        json.object([&] {
            visit([&](const RegistryPath& key) {
                const auto values = wantedValues(key, wanted);
                json.name(key.name());
                writeValues(json, values);
            });
        });
        json.end();
        return 0;
    }
    const char* separator = "";
    visit([&](const RegistryPath& key) {
        const auto values = wantedValues(key, wanted);
        std::cout << std::exchange(separator, "\n") << inColour(Colour::Group, toHost(key.name())) << '\n';
        for (const auto& value : values)
            printValue(value);
    });
    if (!words.has("/s") && !wanted)
        for (const auto& name : keysOf(path))
            std::cout << inColour(Colour::Group, toHost(path.below(name).name())) << '\n';
    return 0;
}

int add(std::span<const std::string_view> given) {
    const Words words("reg add", given, {"/v=", "/ve", "/t=", "/d=", "/s=", "/f"});
    words.need(1, 1, "one key");
    const RegistryPath path(fromHost(words[0]));
    const auto name = valueName(words);
    const auto typeWord = words.value("/t=").value_or("REG_SZ");
    const auto type = typeNamed(typeWord);
    if (!type)
        throw Misuse("there is no type " + std::string(typeWord) + " of values" +
                     nearestOf(fromHost(typeWord), knownTypes()));
    if (!name && (words.has("/t=") || words.has("/d=")))
        throw Misuse("reg add needs /v NAME or /ve for a value");
    RegistryData data;
    if (name)
        data = dataOf(*type, valueOf(words.value("/d=").value_or("")),
                      fromHost(words.value("/s=").value_or("\\0")));
    RegistryKey key;
    requireSuccess(RegistryKey(path.hive).create(path.path, writeAccess, key), path.name());
    if (name)
        requireSuccess(key.set(*name, data), concat(*name, u" in ", path.name()));
    return 0;
}

void deleteTree(const RegistryPath& path) {
    std::vector<RegistryPath> keys;
    walk(path, [&](const RegistryPath& key) { keys.push_back(key); });
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        requireSuccess(RegistryKey(key->hive).deleteKey(key->path), key->name());
}

int remove(std::span<const std::string_view> given) {
    const Words words("reg delete", given, {"/v=", "/ve", "/va", "/f"});
    words.need(1, 1, "one key");
    const RegistryPath path(fromHost(words[0]));
    if (const auto name = valueName(words)) {
        requireValue(path, *name, path.open(writeAccess).deleteValue(*name));
    } else if (words.has("/va")) {
        const auto key = path.open(writeAccess);
        for (const auto& value : valuesOf(path))
            requireSuccess(key.deleteValue(value.name), path.name());
    } else if (!words.has("/f")) {
        throw Misuse("reg delete needs /v NAME, /ve or /va, or /f for the key with all below it");
    } else if (path.path.empty()) {
        throw Misuse("a whole hive is not deleted");
    } else {
        deleteTree(path);
    }
    return 0;
}

void writeTree(Json& json, const RegistryPath& path) {
    json.object([&] {
        json.name("values");
        writeValues(json, valuesOf(path));
        json.name("keys");
        json.object([&] {
            for (const auto& name : keysOf(path)) {
                json.name(name);
                writeTree(json, path.below(name));
            }
        });
    });
}

void drawTree(const RegistryPath& path, const std::string& before) {
    const auto values = valuesOf(path);
    const auto names = keysOf(path);
    for (std::size_t i = 0; i < values.size(); ++i)
        std::cout << before << branch(i + 1 == values.size() && names.empty())
                  << inColour(Colour::Name, shownName(values[i].name)) << '='
                  << toHost(dataText(values[i].data)) << '\n';
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool last = i + 1 == names.size();
        std::cout << before << branch(last) << inColour(Colour::Group, toHost(names[i])) << '\n';
        drawTree(path.below(names[i]), before + std::string(trunk(last)));
    }
}

int tree(std::span<const std::string_view> given) {
    const Words words("reg tree", given, {"--json"});
    words.need(1, 1, "one key");
    const RegistryPath path(fromHost(words[0]));
    path.open(readAccess);
    if (words.has("--json")) {
        Json json(std::cout);
        json.object([&] {
            json.name(path.name());
            writeTree(json, path);
        });
        json.end();
        return 0;
    }
    std::cout << inColour(Colour::Group, toHost(path.name())) << '\n';
    drawTree(path, "");
    return 0;
}

int exportKey(std::span<const std::string_view> given) {
    const Words words("reg export", given, {});
    words.need(2, 2, "a key and a file");
    const RegistryPath root(fromHost(words[0]));
    RegistryTextWriter writer(root.hive);
    writer.heading();
    walk(root, [&](const RegistryPath& key) {
        writer.key(key.path);
        for (const auto& [name, data] : valuesOf(key))
            writer.value(name, data);
        writer.emptyLine();
    });
    if (words[1] == "-")
        std::cout << toHost(writer.lines());
    else
        replaceFile(fullPath(fromHost(words[1])), registryFileOf(writer.lines()));
    return 0;
}

void apply(const RegistryChange& change) {
    const RegistryPath& path = change.key;
    RegistryKey key;
    if (change.deletesKey) {
        if (RegistryKey(path.hive).open(path.path, readAccess, key) != RegistryStatus::NotFound)
            deleteTree(path);
        return;
    }
    requireSuccess(RegistryKey(path.hive).create(path.path, writeAccess, key), path.name());
    if (!change.valueName)
        return;
    if (change.data)
        requireSuccess(key.set(*change.valueName, *change.data), path.name());
    else if (const auto status = key.deleteValue(*change.valueName); status != RegistryStatus::NotFound)
        requireSuccess(status, path.name());
}

std::vector<RegistryChange> changesIn(std::string_view file) {
    return readNamed(file, [](const String& path) { return registryChangesIn(readFile(path)); });
}

int importFile(std::span<const std::string_view> given) {
    const Words words("reg import", given, {});
    words.need(1, 1, "one file");
    for (const auto& change : changesIn(words[0]))
        apply(change);
    return 0;
}

} // namespace

int reg(std::span<const std::string_view> words) {
    return runSubcommand("reg", words,
                         {{"query", query},
                          {"add", add},
                          {"delete", remove},
                          {"tree", tree},
                          {"export", exportKey},
                          {"import", importFile}});
}

} // namespace vlgs::cli
