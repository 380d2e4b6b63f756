// SPDX-License-Identifier: MIT
#include "platform/posix/RegistryTreeText.h"

namespace vlgs::posix {

namespace {

class TreeChanges final : public RegistryChanges {
  public:
    TreeChanges(RegistryHive hive, RegistryKeyNode& root) : hive_(hive), root_(root) {}

    void key(std::u16string_view path) override {
        const auto names = namesOf(path);
        key_ = names ? &root_.make(*names) : nullptr;
    }
    void deletedKey(std::u16string_view path) override {
        key_ = nullptr;
        if (const auto names = namesOf(path))
            root_.remove(*names);
    }
    void value(std::u16string_view name, RegistryData data) override {
        if (key_ && isValueName(name))
            key_->setValue(name, std::move(data));
    }
    void deletedValue(std::u16string_view name) override {
        if (key_ && isValueName(name))
            key_->removeValue(name);
    }

  private:
    /// The path below the hive; nothing for one in another hive, or that no key can have.
    std::optional<std::u16string_view> namesOf(std::u16string_view path) const {
        const auto root = path.substr(0, path.find(u'\\'));
        const auto names = path.substr(root.size());
        const bool fits =
            registryHiveNamed(root) == hive_ && names.find(u'\0') == names.npos && isRegistryPath(names);
        return fits ? std::optional(names) : std::nullopt;
    }
    static bool isValueName(std::u16string_view name) {
        return name.size() <= longestRegistryValueName && name.find(u'\0') == name.npos;
    }

    RegistryHive hive_;
    RegistryKeyNode& root_;
    RegistryKeyNode* key_ = nullptr;
};

void writeTree(RegistryTextWriter& writer, const RegistryKeyNode& key, std::u16string& path) {
    writer.key(path);
    for (std::uint32_t i = 0; i < key.valueCount(); ++i)
        writer.value(key.value(i).name, key.value(i).data);
    writer.emptyLine();
    const auto length = path.size();
    for (std::uint32_t i = 0; i < key.keyCount(); ++i) {
        path.append(length == 0 ? u"" : u"\\").append(key.key(i).name());
        writeTree(writer, key.key(i), path);
        path.resize(length);
    }
}

} // namespace

RegistryTextPlaces readRegistryTree(std::u16string_view text, bool isOldForm, RegistryHive hive,
                                    RegistryKeyNode& root) {
    TreeChanges changes(hive, root);
    return readRegistryText(text, isOldForm, changes);
}

std::u16string registryTextOf(RegistryHive hive, const RegistryKeyNode& root) {
    RegistryTextWriter writer(hive);
    writer.heading();
    std::u16string path;
    writeTree(writer, root, path);
    return writer.lines();
}

} // namespace vlgs::posix
