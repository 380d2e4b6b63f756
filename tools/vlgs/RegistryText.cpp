// SPDX-License-Identifier: MIT
#include "RegistryText.h"

#include "HostText.h"
#include "Misuse.h"
#include "Words.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/RegistryText.h"

#include <algorithm>
#include <charconv>

namespace vlgs::cli {

namespace {

constexpr std::string_view typeNames[] = {"REG_NONE",
                                          "REG_SZ",
                                          "REG_EXPAND_SZ",
                                          "REG_BINARY",
                                          "REG_DWORD",
                                          "REG_DWORD_BIG_ENDIAN",
                                          "REG_LINK",
                                          "REG_MULTI_SZ",
                                          "REG_RESOURCE_LIST",
                                          "REG_FULL_RESOURCE_DESCRIPTOR",
                                          "REG_RESOURCE_REQUIREMENTS_LIST",
                                          "REG_QWORD"};
constexpr std::uint32_t longNumber = 11;

bool isNumber(std::uint32_t type, std::size_t size) {
    return (type == longNumber && size == 8) ||
           ((type == registryType::number || type == registryType::bigEndianNumber) && size == 4);
}

std::string hexOf(std::string_view bytes, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        result += i ? separator : "";
        result += static_cast<char>(ascii::lowerHexDigits[byte >> 4]);
        result += static_cast<char>(ascii::lowerHexDigits[byte & 15]);
    }
    return result;
}

std::uint64_t numberOf(const RegistryData& data) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < data.bytes.size(); ++i) {
        const bool bigEndian = data.type == registryType::bigEndianNumber;
        const auto at = bigEndian ? i : data.bytes.size() - 1 - i;
        number = number << 8 | static_cast<unsigned char>(data.bytes[at]);
    }
    return number;
}

std::string numberBytes(std::uint64_t number, std::size_t size, bool bigEndian) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> (8 * (bigEndian ? size - 1 - i : i)) & 0xFF);
    return bytes;
}

// The bytes of "01,02 03", nothing for other texts.
std::optional<std::string> bytesOf(std::string_view hex) {
    std::string digits, bytes;
    for (const char c : hex)
        if (c != ',' && c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '\\')
            digits += c;
    if (digits.size() % 2 != 0)
        return std::nullopt;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned byte = 0;
        const char* const end = digits.data() + i + 2;
        if (std::from_chars(digits.data() + i, end, byte, 16).ptr != end)
            return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::optional<std::uint64_t> numberIn(std::string_view text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(hex ? 2 : 0);
    std::uint64_t number = 0;
    const auto [end, failure] =
        std::from_chars(text.data(), text.data() + text.size(), number, hex ? 16 : 10);
    if (failure != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return number;
}

} // namespace

namespace {

std::string nearestHive(std::u16string_view wanted) {
    std::vector<String> names;
    for (int hive = 0; hive <= static_cast<int>(RegistryHive::DynData); ++hive)
        names.emplace_back(registryHiveName(static_cast<RegistryHive>(hive)));
    return nearestOf(wanted, names);
}

/// The nearest name to the first part of the path that is not there.
std::string nearestKey(const RegistryPath& path) {
    const RegistryKey root(path.hive);
    RegistryPath there{registryHiveName(path.hive)};
    for (std::u16string_view rest = path.path; !rest.empty();) {
        const auto part = rest.substr(0, rest.find(u'\\'));
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
        RegistryPath next = there.below(part);
        RegistryKey key;
        if (root.open(next.path, registryAccess::enumerateSubKeys, key) == RegistryStatus::NotFound) {
            std::vector<String> names;
            if (root.open(there.path, registryAccess::enumerateSubKeys, key) == RegistryStatus::Success)
                key.keyNames(names);
            return nearestOf(part, names);
        }
        there = std::move(next);
    }
    return {};
}

} // namespace

RegistryPath::RegistryPath(std::u16string_view name) {
    const auto slash = name.find(u'\\');
    const auto known = registryHiveNamed(name.substr(0, slash));
    if (!known)
        throw Misuse("\"" + toHost(name) + "\" begins with no hive" + nearestHive(name.substr(0, slash)) +
                     "\nthe hives are HKCR HKCU HKLM HKU HKCC HKDD");
    hive = *known;
    auto rest = slash == name.npos ? std::u16string_view() : name.substr(slash + 1);
    while (rest.ends_with(u'\\'))
        rest.remove_suffix(1);
    path = rest;
}

String RegistryPath::name() const {
    const auto root = registryHiveName(hive);
    return path.empty() ? String(root) : concat(root, u"\\", path);
}

RegistryPath RegistryPath::below(std::u16string_view key) const {
    RegistryPath result = *this;
    result.path = path.empty() ? String(key) : concat(path, u"\\", key);
    return result;
}

RegistryKey RegistryPath::open(std::uint32_t access) const {
    RegistryKey key;
    const auto status = RegistryKey(hive).open(path, access, key);
    requireSuccess(status, name(), status == RegistryStatus::NotFound ? nearestKey(*this) : "");
    return key;
}

std::string nearestOf(std::u16string_view wanted, const std::vector<String>& names) {
    std::vector<std::string> known;
    known.reserve(names.size());
    for (const String& name : names)
        known.push_back(toHost(name));
    const std::vector<std::string_view> views(known.begin(), known.end());
    return nearest(toHost(wanted), views);
}

void requireSuccess(RegistryStatus status, std::u16string_view subject, std::string_view near) {
    if (status == RegistryStatus::Success)
        return;
    const auto number = static_cast<std::int32_t>(status);
    throw Error(
        number, {},
        status == RegistryStatus::NotFound
            ? concat(u"The registry has no ", subject, String::fromUtf8(near))
            : concat(status == RegistryStatus::AccessDenied ? u"Access is denied" : u"The registry fails",
                     u": ", subject));
}

std::string typeName(std::uint32_t type) {
    return type < std::size(typeNames) ? std::string(typeNames[type]) : "REG_TYPE_" + std::to_string(type);
}

std::vector<String> knownTypes() {
    std::vector<String> names;
    for (const auto name : typeNames)
        names.push_back(String::fromUtf8(name));
    return names;
}

std::optional<std::uint32_t> typeNamed(std::string_view name) {
    for (std::uint32_t type = 0; type < std::size(typeNames); ++type)
        if (equalIgnoringCase(typeNames[type], name))
            return type;
    if (name.starts_with("REG_TYPE_"))
        if (const auto number = numberIn(name.substr(9)); number && *number <= 0xFFFFFFFF)
            return static_cast<std::uint32_t>(*number);
    return std::nullopt;
}

void writeData(Json& json, const RegistryData& data) {
    if (isNumber(data.type, data.bytes.size()))
        return json.raw(std::to_string(numberOf(data)));
    if (data.type != registryType::multiText)
        return json.value(dataText(data).view());
    const String text = registryText(data.bytes);
    std::u16string_view list = text;
    while (list.ends_with(u'\0'))
        list.remove_suffix(1);
    json.array([&] {
        if (!list.empty())
            for (const auto item : split(list, std::u16string_view(u"\0", 1)))
                json.value(item);
    });
}

String dataText(const RegistryData& data) {
    if (data.type == registryType::text || data.type == registryType::expandableText)
        return cutAtNul(registryText(data.bytes));
    if (data.type == registryType::multiText) {
        const String text = registryText(data.bytes);
        std::u16string_view list = text;
        while (list.ends_with(u'\0'))
            list.remove_suffix(1);
        return replaceAll(list, std::u16string_view(u"\0", 1), u"\\0");
    }
    if (!isNumber(data.type, data.bytes.size()))
        return String::fromUtf8(hexOf(data.bytes, ""));
    char digits[24];
    const auto end = std::to_chars(digits, std::end(digits), numberOf(data), 16).ptr;
    return String::fromUtf8("0x" + std::string(digits, end));
}

RegistryData dataOf(std::uint32_t type, std::u16string_view text, std::u16string_view separator) {
    const std::u16string_view nul(u"\0", 1);
    if (type == registryType::text || type == registryType::expandableText)
        return {type, registryBytes(concat(text, nul))};
    if (type == registryType::multiText) {
        const String list = text.empty() ? String() : concat(replaceAll(text, separator, nul), nul);
        return {type, registryBytes(concat(list, nul))};
    }
    const std::string bytes = toHost(text);
    const auto size = type == longNumber ? 8u : 4u;
    if (isNumber(type, size)) {
        const auto number = numberIn(bytes);
        if (!number || (size == 4 && *number > 0xFFFFFFFF))
            throw Misuse("\"" + bytes + "\" is no number for " + typeName(type) + ": 12 or 0xC");
        return {type, numberBytes(*number, size, type == registryType::bigEndianNumber)};
    }
    const auto data = bytesOf(bytes);
    if (!data)
        throw Misuse("\"" + bytes + "\" is no data for " + typeName(type) +
                     ", which are hexadecimal digits in pairs");
    return {type, *data};
}

namespace {

[[noreturn]] void raiseFormat(const std::string& what) {
    constexpr std::int32_t invalidFileFormat = 321;
    throw Error(invalidFileFormat, {}, String::fromUtf8("Invalid file format: " + what));
}

class ChangeList final : public RegistryChanges {
  public:
    explicit ChangeList(std::u16string_view text) : text_(text) {}

    void key(std::u16string_view path) override { add({pathOf(path)}); }
    void deletedKey(std::u16string_view path) override { add({pathOf(path), true}); }
    void value(std::u16string_view name, RegistryData data) override {
        add({changes_.back().key, false, name, std::move(data)});
    }
    void deletedValue(std::u16string_view name) override { add({changes_.back().key, false, name}); }
    void misfit(std::size_t place) override {
        const auto line = std::ranges::count(text_.substr(0, place), u'\n') + 1;
        raiseFormat("line " + std::to_string(line) + " is neither a key nor a value");
    }

    std::vector<RegistryChange> take() { return std::move(changes_); }

  private:
    static RegistryPath pathOf(std::u16string_view path) {
        if (!registryHiveNamed(path.substr(0, path.find(u'\\'))))
            raiseFormat("there is no hive of the key " + toHost(path));
        return RegistryPath(path);
    }
    void add(RegistryChange change) { changes_.push_back(std::move(change)); }

    std::u16string_view text_;
    std::vector<RegistryChange> changes_;
};

} // namespace

std::vector<RegistryChange> registryChangesIn(std::string_view file) {
    const auto content = decodeRegistryFile(file);
    if (!content)
        raiseFormat("it has no heading of a registry file");
    ChangeList changes(content->text);
    readRegistryText(content->text, content->isOldForm, changes);
    return changes.take();
}

} // namespace vlgs::cli
