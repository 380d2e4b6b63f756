// SPDX-License-Identifier: MIT
#include "packager/PackedObjects.h"

#include "platform/ThreadSlot.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace vlgs {

namespace {

constexpr auto most = std::numeric_limits<std::int32_t>::max();

PackedObjects::Entry entryOf(Object& object) {
    if (const auto* outside = dynamic_cast<const OutsideObject*>(&object))
        return {outside->address(), nullptr, &outside->access(), 0};
    const CallersView* view = callersView;
    const void* address = view ? view->address(object) : nullptr;
    PackedObjects::Entry entry{address ? address : &object, &object, nullptr, 0};
    std::memcpy(&entry.signature, entry.address, sizeof entry.signature);
    return entry;
}

} // namespace

PackedObjects* PackedObjects::find() noexcept {
    return ThreadOwned<PackedObjects>::find();
}

PackedObjects& PackedObjects::make() {
    return ThreadOwned<PackedObjects>::make();
}

std::int32_t PackedObjects::add(Object& object) {
    const Entry entry = entryOf(object);
    const auto [first, last] = numbers_.equal_range(keyOf(entry));
    for (auto known = first; known != last; ++known)
        if (Entry& same = entries_.at(known->second); same.address == entry.address) {
            same = entry;
            return known->second;
        }
    const std::int32_t number = numberFor(entry.address);
    removeNumber(number); // callers had the address for another object
    const auto added = numbers_.emplace(keyOf(entry), number);
    try {
        entries_.emplace(number, entry);
    } catch (...) {
        numbers_.erase(added);
        throw;
    }
    if (entry.own)
        object.watchEnd(&forget);
    return number;
}

const void* PackedObjects::keyOf(const Entry& entry) noexcept {
    return entry.own ? entry.own : entry.address;
}

void PackedObjects::removeNumber(std::int32_t number) noexcept {
    const auto found = entries_.find(number);
    if (found == entries_.end())
        return;
    const auto [first, last] = numbers_.equal_range(keyOf(found->second));
    numbers_.erase(std::find_if(first, last, [&](const auto& known) { return known.second == number; }));
    entries_.erase(found);
}

const PackedObjects::Entry* PackedObjects::withNumber(std::int32_t number) const noexcept {
    const auto found = entries_.find(number);
    return found == entries_.end() ? nullptr : &found->second;
}

std::int32_t PackedObjects::numberFor(const void* address) {
    const auto value = reinterpret_cast<std::uintptr_t>(address);
    if (value <= static_cast<std::uintptr_t>(most) && value % 2 == 0)
        return static_cast<std::int32_t>(value);
    while (entries_.contains(next_))
        next_ = next_ == most ? 1 : next_ + 2;
    const auto number = next_;
    next_ = next_ == most ? 1 : next_ + 2;
    return number;
}

void PackedObjects::forget(const Object* object) noexcept {
    PackedObjects* table = find();
    if (!table)
        return;
    const auto [first, last] = table->numbers_.equal_range(object);
    for (auto known = first; known != last; ++known)
        table->entries_.erase(known->second);
    table->numbers_.erase(first, last);
}

} // namespace vlgs
