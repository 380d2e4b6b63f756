// SPDX-License-Identifier: MIT
#include "platform/Registry.h"

#include "platform/Guid.h"
#include "platform/windows/Host.h"

#include <optional>
#include <set>

namespace vlgs {

using namespace windows;

namespace {

HKEY rootOf(RegistryHive hive) {
    constexpr ULONG_PTR firstRoot = 0x80000000u;
    constexpr ULONG_PTR places[] = {0, 1, 2, 3, 5, 6};
    return reinterpret_cast<HKEY>(
        static_cast<LONG_PTR>(static_cast<LONG>(firstRoot + places[static_cast<std::size_t>(hive)])));
}

RegistryStatus statusOf(LSTATUS status) {
    return static_cast<RegistryStatus>(status);
}

/// A name, which ends before its first NUL.
class Name {
  public:
    explicit Name(std::u16string_view text) : text_(text.substr(0, text.find(u'\0'))) {}
    const wchar_t* get() const noexcept { return wide(text_.data()); }

  private:
    String text_;
};

constexpr std::size_t longestKeyName = 256;
constexpr std::size_t longestValueName = 16384;

} // namespace

struct RegistryKey::Handle {
    HKEY key;
    Key owned; // none for a root, which nobody closes
};

RegistryKey::RegistryKey() noexcept = default;
RegistryKey::RegistryKey(RegistryHive hive) : handle_(std::make_unique<Handle>(Handle{rootOf(hive), {}})) {}
RegistryKey::RegistryKey(RegistryKey&& other) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&& other) noexcept = default;
RegistryKey::~RegistryKey() = default;

void RegistryKey::close() noexcept {
    handle_.reset();
}

RegistryStatus RegistryKey::open(std::u16string_view path, std::uint32_t access, RegistryKey& key) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    if (access == 0)
        return RegistryStatus::AccessDenied;
    HKEY opened = nullptr;
    const auto status = RegOpenKeyExW(handle_->key, Name(path).get(), 0, access, &opened);
    if (status == ERROR_SUCCESS)
        key.handle_ = std::make_unique<Handle>(Handle{opened, Key(opened)});
    return statusOf(status);
}

RegistryStatus RegistryKey::create(std::u16string_view path, std::uint32_t access, RegistryKey& key) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    if (access == 0)
        return RegistryStatus::AccessDenied;
    HKEY opened = nullptr;
    const auto status = RegCreateKeyExW(handle_->key, Name(path).get(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                        access, nullptr, &opened, nullptr);
    if (status == ERROR_SUCCESS)
        key.handle_ = std::make_unique<Handle>(Handle{opened, Key(opened)});
    return statusOf(status);
}

RegistryStatus RegistryKey::deleteKey(std::u16string_view path) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    return statusOf(RegDeleteKeyW(handle_->key, Name(path).get()));
}

RegistryStatus RegistryKey::query(std::u16string_view name, RegistryData& data) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    const Name text(name);
    RegistryData found;
    DWORD type = 0;
    auto status = static_cast<LSTATUS>(ERROR_MORE_DATA);
    for (DWORD size = 1024; status == ERROR_MORE_DATA;) {
        found.bytes.resize(size);
        status = RegQueryValueExW(handle_->key, text.get(), nullptr, &type,
                                  reinterpret_cast<BYTE*>(found.bytes.data()), &size);
        if (status == ERROR_SUCCESS)
            found.bytes.resize(size);
    }
    if (status == ERROR_SUCCESS) {
        found.type = type;
        data = std::move(found);
    }
    return statusOf(status);
}

RegistryStatus RegistryKey::set(std::u16string_view name, const RegistryData& data) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    return statusOf(RegSetValueExW(handle_->key, Name(name).get(), 0, data.type,
                                   reinterpret_cast<const BYTE*>(data.bytes.data()),
                                   static_cast<DWORD>(data.bytes.size())));
}

RegistryStatus RegistryKey::deleteValue(std::u16string_view name) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    return statusOf(RegDeleteValueW(handle_->key, Name(name).get()));
}

RegistryStatus RegistryKey::renameValue(std::u16string_view from, std::u16string_view to) const {
    RegistryData data;
    RegistryData replaced;
    auto status = query(from, data);
    if (status != RegistryStatus::Success)
        return status;
    status = query(to, replaced);
    if (status == RegistryStatus::NotFound) {
        status = set(to, data);
        return status == RegistryStatus::Success ? deleteValue(from) : status;
    }
    // A value keeps the spelling it was made with, so the one that has the new name goes first. It may be the
    // value itself, which only the host can tell; so its content lies under a name of its own meanwhile.
    const String spare = guidText(createGuid());
    if ((status = set(spare, data)) != RegistryStatus::Success)
        return status;
    if ((status = deleteValue(to)) != RegistryStatus::Success && status != RegistryStatus::NotFound)
        return status;
    if ((status = deleteValue(from)) != RegistryStatus::Success && status != RegistryStatus::NotFound)
        return status;
    if ((status = set(to, data)) != RegistryStatus::Success)
        return status;
    return deleteValue(spare);
}

namespace {

/// When a key was last changed; nothing for a key that does not tell it.
std::optional<std::uint64_t> changeOf(HKEY key) {
    FILETIME time{};
    if (RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, &time) != ERROR_SUCCESS)
        return std::nullopt;
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

/// Reads what a key has, anew for as long as somebody changes it meanwhile. `readNext(index, item)` answers a
/// status; an item that went away while it was read is passed over.
template <class Item, class ReadNext, class NameOf>
RegistryStatus readAll(HKEY key, std::vector<Item>& all, const ReadNext& readNext, const NameOf& nameOf) {
    constexpr int attempts = 50;
    std::vector<Item> found;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto before = changeOf(key);
        found.clear();
        std::set<String> names;
        auto status = RegistryStatus::Success;
        for (DWORD index = 0; status == RegistryStatus::Success; ++index) {
            Item item;
            status = readNext(index, item);
            if (status == RegistryStatus::Success && names.insert(nameOf(item)).second)
                found.push_back(std::move(item));
            else if (status == RegistryStatus::NotFound)
                status = RegistryStatus::Success;
        }
        if (status != static_cast<RegistryStatus>(ERROR_NO_MORE_ITEMS))
            return status;
        if (before == changeOf(key))
            break;
    }
    all = std::move(found);
    return RegistryStatus::Success;
}

} // namespace

RegistryStatus RegistryKey::values(std::vector<RegistryValue>& all) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    std::vector<wchar_t> text(longestValueName);
    const auto readNext = [&](DWORD index, RegistryValue& value) {
        auto length = static_cast<DWORD>(text.size());
        const auto status =
            RegEnumValueW(handle_->key, index, text.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS)
            return statusOf(status);
        value.name = std::u16string_view(reinterpret_cast<const char16_t*>(text.data()), length);
        return query(value.name, value.data);
    };
    return readAll(handle_->key, all, readNext, [](const RegistryValue& value) { return value.name; });
}

RegistryStatus RegistryKey::keyNames(std::vector<String>& all) const {
    if (!handle_)
        return RegistryStatus::InvalidHandle;
    const auto readNext = [&](DWORD index, String& name) {
        wchar_t text[longestKeyName];
        DWORD length = longestKeyName;
        const auto status =
            RegEnumKeyExW(handle_->key, index, text, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_SUCCESS)
            name = std::u16string_view(reinterpret_cast<const char16_t*>(text), length);
        return statusOf(status);
    };
    return readAll(handle_->key, all, readNext, [](const String& name) { return name; });
}

} // namespace vlgs
