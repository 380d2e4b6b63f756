// SPDX-License-Identifier: MIT
#include "platform/posix/RegistryTree.h"

namespace vlgs::posix {

bool isRegistryPath(std::u16string_view path) {
    std::size_t depth = 0;
    return forEachKeyName(path, [&](std::u16string_view name) {
        return name.size() <= longestRegistryKeyName && ++depth <= deepestRegistryKey;
    });
}

RegistryKeyNode* RegistryKeyNode::child(std::u16string_view name) const noexcept {
    const auto place = keys_.find(name);
    return place ? keys_[place].get() : nullptr;
}

RegistryKeyNode* RegistryKeyNode::find(std::u16string_view path) noexcept {
    RegistryKeyNode* key = this;
    forEachKeyName(path, [&](std::u16string_view name) { return (key = key->child(name)) != nullptr; });
    return key;
}

RegistryKeyNode& RegistryKeyNode::make(std::u16string_view path) {
    RegistryKeyNode* key = this;
    forEachKeyName(path, [&](std::u16string_view name) {
        RegistryKeyNode* next = key->child(name);
        if (!next) {
            auto made = std::make_unique<RegistryKeyNode>(name);
            next = made.get();
            key->keys_.add(std::move(made), next->name());
        }
        key = next;
        return true;
    });
    return *key;
}

void RegistryKeyNode::remove(std::u16string_view path) {
    RegistryKeyNode* parent = nullptr;
    RegistryKeyNode* key = this;
    forEachKeyName(path, [&](std::u16string_view name) {
        parent = key;
        return (key = key->child(name)) != nullptr;
    });
    if (parent && key)
        parent->keys_.remove(parent->keys_.find(key->name()));
}

const RegistryKeyNode& RegistryKeyNode::key(std::uint32_t index) const noexcept {
    return *keys_[keys_.at(index)];
}

const RegistryValueNode& RegistryKeyNode::value(std::uint32_t index) const noexcept {
    return values_[values_.at(index)];
}

const RegistryValueNode* RegistryKeyNode::findValue(std::u16string_view name) const noexcept {
    const auto place = values_.find(name);
    return place ? &values_[place] : nullptr;
}

void RegistryKeyNode::setValue(String name, RegistryData data) {
    if (const auto place = values_.find(name))
        values_[place].data = std::move(data);
    else
        values_.add({name, std::move(data)}, name);
}

void RegistryKeyNode::removeValue(std::u16string_view name) {
    if (const auto place = values_.find(name))
        values_.remove(place);
}

} // namespace vlgs::posix
