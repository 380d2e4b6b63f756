#include "platform/posix/RegistryTree.h"

namespace vlgs::posix {

namespace {

template <class Node>
Node* nodeIn(const Variant* member) noexcept {
    return member ? static_cast<Node*>(member->object()) : nullptr;
}

std::int32_t positionOf(std::uint32_t index) noexcept {
    return static_cast<std::int32_t>(index) + 1;
}

} // namespace

bool isRegistryPath(std::u16string_view path) {
    std::size_t depth = 0;
    return forEachKeyName(path, [&](std::u16string_view name) {
        return name.size() <= longestRegistryKeyName && ++depth <= deepestRegistryKey;
    });
}

RegistryKeyNode* RegistryKeyNode::child(std::u16string_view name) const noexcept {
    return nodeIn<RegistryKeyNode>(keys_.withKey(name));
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
            const auto made = vlgs::make<RegistryKeyNode>(name);
            key->keys_.add(made, made->name());
            next = made.get();
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
        parent->keys_.remove(String(key->name()));
}

const RegistryKeyNode& RegistryKeyNode::key(std::uint32_t index) const noexcept {
    return *nodeIn<RegistryKeyNode>(keys_.at(positionOf(index)));
}

const RegistryValueNode& RegistryKeyNode::value(std::uint32_t index) const noexcept {
    return *nodeIn<RegistryValueNode>(values_.at(positionOf(index)));
}

const RegistryValueNode* RegistryKeyNode::findValue(std::u16string_view name) const noexcept {
    return nodeIn<RegistryValueNode>(values_.withKey(name));
}

void RegistryKeyNode::setValue(String name, RegistryData data) {
    if (auto* value = nodeIn<RegistryValueNode>(values_.withKey(name)))
        value->data = std::move(data);
    else
        values_.add(vlgs::make<RegistryValueNode>(name, std::move(data)), name);
}

void RegistryKeyNode::removeValue(const String& name) {
    values_.remove(name);
}

} // namespace vlgs::posix
