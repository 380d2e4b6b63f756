// SPDX-License-Identifier: MIT
#include "RegistryText.h"

#include "HostText.h"
#include "Misuse.h"
#include "Words.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <charconv>

namespace vlgs::cli {

namespace {

struct HiveName {
    RegistryHive hive;
    std::u16string_view name, shortName;
};
constexpr HiveName hives[] = {
    {RegistryHive::ClassesRoot, u"HKEY_CLASSES_ROOT", u"HKCR"},
    {RegistryHive::CurrentUser, u"HKEY_CURRENT_USER", u"HKCU"},
    {RegistryHive::LocalMachine, u"HKEY_LOCAL_MACHINE", u"HKLM"},
    {RegistryHive::Users, u"HKEY_USERS", u"HKU"},
    {RegistryHive::CurrentConfig, u"HKEY_CURRENT_CONFIG", u"HKCC"},
    {RegistryHive::DynData, u"HKEY_DYN_DATA", u"HKDD"},
};

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

RegistryPath::RegistryPath(std::u16string_view name) {
    const auto slash = name.find(u'\\');
    const auto first = name.substr(0, slash);
    for (const auto& each : hives) {
        if (equalIgnoringCase(first, each.name) || equalIgnoringCase(first, each.shortName)) {
            hive = each.hive;
            auto rest = slash == name.npos ? std::u16string_view() : name.substr(slash + 1);
            while (rest.ends_with(u'\\'))
                rest.remove_suffix(1);
            path = rest;
            return;
        }
    }
    std::string known;
    for (const auto& each : hives)
        known += " " + toHost(each.shortName);
    throw Misuse("\"" + toHost(name) + "\" begins with no hive; the hives are" + known);
}

String RegistryPath::name() const {
    const auto& known = *std::ranges::find(hives, hive, &HiveName::hive);
    return path.empty() ? String(known.name) : concat(known.name, u"\\", path);
}

RegistryPath RegistryPath::below(std::u16string_view key) const {
    RegistryPath result = *this;
    result.path = path.empty() ? String(key) : concat(path, u"\\", key);
    return result;
}

RegistryKey RegistryPath::open(std::uint32_t access) const {
    RegistryKey key;
    requireSuccess(RegistryKey(hive).open(path, access, key), name());
    return key;
}

void requireSuccess(RegistryStatus status, std::u16string_view subject) {
    if (status == RegistryStatus::Success)
        return;
    const auto number = static_cast<std::int32_t>(status);
    throw Error(
        number, {},
        status == RegistryStatus::NotFound
            ? concat(u"The registry has no ", subject)
            : concat(status == RegistryStatus::AccessDenied ? u"Access is denied" : u"The registry fails",
                     u": ", subject));
}

std::string typeName(std::uint32_t type) {
    return type < std::size(typeNames) ? std::string(typeNames[type]) : "REG_TYPE_" + std::to_string(type);
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

// ---- ".reg" files ---------------------------------------------------------------------------------------

namespace {

class RegistryTextParser {
  public:
    explicit RegistryTextParser(std::u16string_view text) : text_(text) {}

    std::vector<RegistryChange> parse() {
        const auto heading = trim(takeLine());
        isOldForm_ = heading == u"REGEDIT4";
        if (!isOldForm_ && heading != u"Windows Registry Editor Version 5.00")
            fail("the file has no heading of a registry file");
        while (at_ < text_.size()) {
            start_ = at_;
            const char16_t c = text_[at_];
            if (c == u'[')
                takeKey();
            else if (c == u'"' || c == u'@')
                takeValue();
            else if (const auto line = trim(takeLine()); !line.empty() && line[0] != u';')
                fail("neither a key nor a value");
        }
        return std::move(changes_);
    }

  private:
    [[noreturn]] void fail(const std::string& what) const {
        const auto line = std::ranges::count(text_.substr(0, start_), u'\n') + 1;
        throw Misuse("line " + std::to_string(line) + ": " + what);
    }

    std::u16string_view takeLine() {
        const auto end = text_.find(u'\n', at_);
        auto line = text_.substr(at_, end == text_.npos ? end : end - at_);
        at_ = end == text_.npos ? text_.size() : end + 1;
        if (line.ends_with(u'\r'))
            line.remove_suffix(1);
        return line;
    }

    void takeKey() {
        const auto line = trimRight(takeLine());
        if (!line.ends_with(u']'))
            fail("a \"]\" is missing");
        const bool deletes = line.starts_with(u"[-");
        key_ = line.substr(deletes ? 2 : 1, line.size() - (deletes ? 3 : 2));
        try {
            RegistryPath{key_};
        } catch (const Misuse& misuse) {
            fail(misuse.what());
        }
        changes_.push_back({key_, deletes});
    }

    // What stands in quotes; line ends may.
    String takeQuoted() {
        std::u16string result;
        for (++at_; at_ < text_.size() && text_[at_] != u'"'; ++at_) {
            if (text_[at_] == u'\\' && at_ + 1 < text_.size())
                ++at_;
            result += text_[at_];
        }
        if (at_ == text_.size())
            fail("a quote is missing");
        ++at_;
        return result;
    }

    void takeValue() {
        if (key_.empty())
            fail("a value without a key");
        String name;
        if (text_[at_] == u'@')
            ++at_;
        else
            name = takeQuoted();
        if (at_ == text_.size() || text_[at_] != u'=')
            fail("a \"=\" is missing");
        ++at_;
        RegistryChange change{key_, false, name};
        if (at_ < text_.size() && text_[at_] == u'"') {
            change.data = dataOf(registryType::text, takeQuoted(), {});
            if (!trim(takeLine()).empty())
                fail("text behind a value");
        } else {
            std::u16string data(trim(takeLine()));
            while (data.ends_with(u'\\') && at_ < text_.size()) {
                data.pop_back();
                data += trim(takeLine());
            }
            change.data = dataIn(toHost(data));
        }
        changes_.push_back(std::move(change));
    }

    std::optional<RegistryData> dataIn(std::string_view data) const {
        if (data == "-")
            return std::nullopt;
        if (data.starts_with("dword:"))
            if (const auto number = numberIn("0x" + std::string(data.substr(6)));
                number && *number <= 0xFFFFFFFF)
                return RegistryData{registryType::number, numberBytes(*number, 4, false)};
        const auto colon = data.find(':');
        auto type = data.substr(0, colon);
        std::optional<std::uint64_t> number = registryType::binary;
        if (type.starts_with("hex(") && type.ends_with(')'))
            number = numberIn("0x" + std::string(type.substr(4, type.size() - 5)));
        else if (type != "hex")
            number.reset();
        auto bytes = colon == data.npos ? std::nullopt : bytesOf(data.substr(colon + 1));
        if (!number || *number > 0xFFFFFFFF || !bytes)
            fail("no data of a value");
        const auto code = static_cast<std::uint32_t>(*number);
        const bool isText = code == registryType::text || code == registryType::expandableText ||
                            code == registryType::multiText;
        if (isOldForm_ && isText)
            bytes = registryBytes(CodePage::system().decode(*bytes));
        return RegistryData{code, *bytes};
    }

    std::u16string_view text_;
    std::size_t at_ = 0;
    std::size_t start_ = 0;
    bool isOldForm_ = false;
    String key_;
    std::vector<RegistryChange> changes_;
};

String quotedText(std::u16string_view text) {
    return concat(u"\"", replaceAll(replaceAll(text, u"\\", u"\\\\"), u"\"", u"\\\""), u"\"");
}

} // namespace

std::vector<RegistryChange> parseRegistryText(std::u16string_view text) {
    return RegistryTextParser(text).parse();
}

std::u16string registryTextLine(std::u16string_view name, const RegistryData& data) {
    String line = concat(name.empty() ? String(u"@") : quotedText(name), u"=");
    if (data.type == registryType::text && data == dataOf(registryType::text, dataText(data), {}))
        line = concat(line, quotedText(dataText(data)));
    else if (data.type == registryType::number && data.bytes.size() == 4)
        line = concat(line, String::fromUtf8("dword:" + hexOf(numberBytes(numberOf(data), 4, true), "")));
    else {
        char digits[12];
        const auto end = std::to_chars(digits, std::end(digits), data.type, 16).ptr;
        const std::string type =
            data.type == registryType::binary ? "hex:" : "hex(" + std::string(digits, end) + "):";
        line = concat(line, String::fromUtf8(type + hexOf(data.bytes, ",")));
    }
    return std::u16string(line.view()) + u"\r\n";
}

} // namespace vlgs::cli
