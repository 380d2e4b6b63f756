// SPDX-License-Identifier: MIT
#include "platform/Registry.h"

#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/posix/RegistryFile.h"
#include "platform/posix/UserFolders.h"

#include <array>

namespace vlgs {

using namespace posix;

namespace {

std::string registryFolder() {
    if (auto own = trustedVariable("VLGS_REGISTRY").value_or(""); !own.empty())
        return own;
    auto data = trustedVariable("XDG_DATA_HOME").value_or("");
    if (!data.starts_with('/'))
        data = homeFolder() + "/.local/share";
    return data + "/vlgs/registry";
}

/// The hives that a thread has used, all of one folder.
class Hives {
  public:
    // The code page's state of the thread, of use when a hive is read for the last time, ends after this.
    Hives() { CodePage::system(); }

    RegistryFile& file(RegistryHive hive) {
        if (auto folder = registryFolder(); folder != folder_) {
            files_ = {};
            folder_ = std::move(folder);
        }
        auto& file = files_[static_cast<std::size_t>(hive)];
        if (!file)
            file = std::make_unique<RegistryFile>(
                folder_ + "/" + String(registryHiveName(hive)).toUtf8() + ".reg", hive);
        return *file;
    }

  private:
    std::string folder_;
    std::array<std::unique_ptr<RegistryFile>, 6> files_;
};

RegistryFile& fileOf(RegistryHive hive) {
    thread_local Hives hives;
    return hives.file(hive);
}

// Access rights of the platform.
constexpr std::uint32_t readRights = 0x20019;
constexpr std::uint32_t writeRights = 0x20006;
constexpr std::uint32_t allRights = 0xF003F;
/// Those of all rights that change something.
constexpr std::uint32_t changingRights = 0xD0026;

/// The rights that an access mask asks for, none for a mask that no key grants.
std::uint32_t rightsOf(std::uint32_t access) noexcept {
    struct Generic {
        std::uint32_t mask;
        std::uint32_t rights;
    };
    constexpr Generic generics[] = {
        {0x80000000, readRights}, {0x40000000, writeRights}, {0x20000000, readRights},
        {0x10000000, allRights},  {0x02000000, allRights},
    };
    constexpr std::uint32_t viewOf32Or64Bits = 0x300;
    std::uint32_t rights = access & ~viewOf32Or64Bits;
    for (const auto& generic : generics)
        if (rights & generic.mask)
            rights = (rights & ~generic.mask) | generic.rights;
    return (rights & ~allRights) == 0 ? rights : 0;
}

/// The names of two paths with one separator between any two.
String joined(std::u16string_view path, std::u16string_view below) {
    std::u16string names(path);
    forEachKeyName(below, [&](std::u16string_view name) {
        names.append(names.empty() ? u"" : u"\\").append(name);
        return true;
    });
    return names;
}

RegistryStatus checkPath(std::u16string_view path) {
    if (path.starts_with(u'\\'))
        return RegistryStatus::BadPathName;
    return isRegistryPath(path) ? RegistryStatus::Success : RegistryStatus::InvalidParameter;
}

} // namespace

struct RegistryKey::Handle {
    RegistryHive hive;
    String path;
    std::uint32_t rights;

    bool may(std::uint32_t right) const noexcept { return (rights & right) == right; }
};

RegistryKey::RegistryKey() noexcept = default;
RegistryKey::RegistryKey(RegistryHive hive)
    : handle_(std::make_unique<Handle>(Handle{hive, String(), allRights})) {}
RegistryKey::RegistryKey(RegistryKey&& other) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&& other) noexcept = default;
RegistryKey::~RegistryKey() = default;

void RegistryKey::close() noexcept {
    handle_.reset();
}

namespace {

/// Brings the hive up to date and finds a key that is open.
template <class Handle>
RegistryStatus find(const Handle* handle, std::uint32_t right, RegistryKeyNode*& key) {
    if (!handle)
        return RegistryStatus::InvalidHandle;
    auto& file = fileOf(handle->hive);
    if (const auto status = file.refresh(); status != RegistryStatus::Success)
        return status;
    key = file.root().find(handle->path);
    return !key                 ? RegistryStatus::KeyDeleted
           : handle->may(right) ? RegistryStatus::Success
                                : RegistryStatus::AccessDenied;
}

/// Changes a key that is open: `describe(key, writer)`.
template <class Handle, class Describe>
RegistryStatus change(const Handle* handle, std::uint32_t right, const Describe& describe) {
    if (!handle)
        return RegistryStatus::InvalidHandle;
    return fileOf(handle->hive).change([&](RegistryKeyNode& root, RegistryTextWriter& writer) {
        auto* key = root.find(handle->path);
        return !key                 ? RegistryStatus::KeyDeleted
               : handle->may(right) ? describe(*key, writer)
                                    : RegistryStatus::AccessDenied;
    });
}

} // namespace

RegistryStatus RegistryKey::open(std::u16string_view path, std::uint32_t access, RegistryKey& key) const {
    path = cutAtNul(path);
    RegistryKeyNode* node = nullptr;
    auto status = find(handle_.get(), 0, node);
    if (status == RegistryStatus::Success)
        status = checkPath(path);
    if (status != RegistryStatus::Success)
        return status;
    if (!node->find(path))
        return RegistryStatus::NotFound;
    const auto rights = rightsOf(access);
    if (rights == 0 || ((rights & changingRights) && !fileOf(handle_->hive).isWritable()))
        return RegistryStatus::AccessDenied;
    key.handle_ = std::make_unique<Handle>(Handle{handle_->hive, joined(handle_->path, path), rights});
    return RegistryStatus::Success;
}

RegistryStatus RegistryKey::create(std::u16string_view path, std::uint32_t access, RegistryKey& key) const {
    path = cutAtNul(path);
    RegistryKey opened;
    const auto found = open(path, access, opened);
    if (found == RegistryStatus::Success)
        key = std::move(opened);
    if (found != RegistryStatus::NotFound)
        return found;
    const auto whole = joined(handle_->path, path);
    if (!isRegistryPath(whole))
        return RegistryStatus::InvalidParameter;
    const auto status = change(handle_.get(), registryAccess::createSubKey, [&](auto& node, auto& writer) {
        if (!node.find(path))
            writer.key(whole);
        return RegistryStatus::Success;
    });
    return status == RegistryStatus::Success ? open(path, access, key) : status;
}

RegistryStatus RegistryKey::deleteKey(std::u16string_view path) const {
    path = cutAtNul(path);
    if (const auto status = checkPath(path); status != RegistryStatus::Success)
        return status;
    return change(handle_.get(), registryAccess::createSubKey, [&](auto& node, auto& writer) {
        const auto whole = joined(handle_->path, path);
        const auto* found = node.find(path);
        if (!found)
            return RegistryStatus::NotFound;
        if (found->keyCount() > 0 || whole.empty())
            return RegistryStatus::AccessDenied;
        writer.deletedKey(whole);
        return RegistryStatus::Success;
    });
}

RegistryStatus RegistryKey::query(std::u16string_view name, RegistryData& data) const {
    RegistryKeyNode* node = nullptr;
    if (const auto status = find(handle_.get(), registryAccess::queryValue, node);
        status != RegistryStatus::Success)
        return status;
    const auto* value = node->findValue(cutAtNul(name));
    if (!value)
        return RegistryStatus::NotFound;
    data = value->data;
    return RegistryStatus::Success;
}

RegistryStatus RegistryKey::set(std::u16string_view name, const RegistryData& data) const {
    name = cutAtNul(name);
    if (name.size() > longestRegistryValueName)
        return RegistryStatus::InvalidParameter;
    return change(handle_.get(), registryAccess::setValue, [&](auto& node, auto& writer) {
        const auto* value = node.findValue(name);
        if (value && value->data == data)
            return RegistryStatus::Success;
        writer.key(handle_->path);
        writer.value(name, data);
        return RegistryStatus::Success;
    });
}

RegistryStatus RegistryKey::deleteValue(std::u16string_view name) const {
    name = cutAtNul(name);
    return change(handle_.get(), registryAccess::setValue, [&](auto& node, auto& writer) {
        if (!node.findValue(name))
            return RegistryStatus::NotFound;
        writer.key(handle_->path);
        writer.deletedValue(name);
        return RegistryStatus::Success;
    });
}

RegistryStatus RegistryKey::renameValue(std::u16string_view from, std::u16string_view to) const {
    from = cutAtNul(from);
    to = cutAtNul(to);
    if (to.size() > longestRegistryValueName)
        return RegistryStatus::InvalidParameter;
    constexpr auto rights = registryAccess::setValue | registryAccess::queryValue;
    return change(handle_.get(), rights, [&](auto& node, auto& writer) {
        const auto* value = node.findValue(from);
        if (!value)
            return RegistryStatus::NotFound;
        if (value->name == to)
            return RegistryStatus::Success;
        writer.key(handle_->path);
        writer.deletedValue(from);
        writer.deletedValue(to);
        writer.value(to, value->data);
        return RegistryStatus::Success;
    });
}

RegistryStatus RegistryKey::values(std::vector<RegistryValue>& all) const {
    RegistryKeyNode* node = nullptr;
    if (const auto status = find(handle_.get(), registryAccess::queryValue, node);
        status != RegistryStatus::Success)
        return status;
    all.clear();
    for (std::uint32_t i = 0; i < node->valueCount(); ++i)
        all.push_back({node->value(i).name, node->value(i).data});
    return RegistryStatus::Success;
}

RegistryStatus RegistryKey::keyNames(std::vector<String>& all) const {
    RegistryKeyNode* node = nullptr;
    if (const auto status = find(handle_.get(), registryAccess::enumerateSubKeys, node);
        status != RegistryStatus::Success)
        return status;
    all.clear();
    for (std::uint32_t i = 0; i < node->keyCount(); ++i)
        all.push_back(node->key(i).name());
    return RegistryStatus::Success;
}

} // namespace vlgs
