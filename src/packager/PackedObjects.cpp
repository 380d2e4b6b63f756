#include "packager/PackedObjects.h"

#include "platform/ThreadSlot.h"

#include <limits>

namespace vlgs {

namespace {

constexpr auto most = std::numeric_limits<std::int32_t>::max();

} // namespace

PackedObjects* PackedObjects::find() noexcept {
    return ThreadOwned<PackedObjects>::find();
}

PackedObjects& PackedObjects::make() {
    return ThreadOwned<PackedObjects>::make();
}

std::int32_t PackedObjects::add(Object& object) {
    const auto* outside = dynamic_cast<const OutsideObject*>(&object);
    const void* address = outside ? outside->address() : &object;
    const auto [known, isNew] = numbers_.try_emplace(address, 0);
    if (isNew) {
        try {
            known->second = numberFor(address);
            entries_.emplace(known->second, Entry{});
        } catch (...) {
            numbers_.erase(known);
            throw;
        }
    }
    auto& entry = entries_[known->second];
    entry = outside ? Entry{address, nullptr, &outside->access()} : Entry{address, &object, nullptr};
    if (!outside)
        object.watchEnd(&forget);
    return known->second;
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
    const auto found = table->numbers_.find(object);
    if (found == table->numbers_.end())
        return;
    table->entries_.erase(found->second);
    table->numbers_.erase(found);
}

} // namespace vlgs
