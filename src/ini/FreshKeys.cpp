// SPDX-License-Identifier: MIT
#include "ini/FreshKeys.h"

namespace vlgs {

Property& FreshKeys::object(Place key) {
    if (arena()->isReplaced(key))
        return *objects_[arena()->replacement(key)];
    objects_.push_back(makeObject(key));
    arena()->replaceValue(key, static_cast<std::uint32_t>(objects_.size() - 1));
    return *objects_.back();
}

FreshKeys::Place FreshKeys::set(StoredText name, StoredText value) {
    const Place known = findOrAdd(name, value);
    if (known != none)
        object(known).LetValue(value.toString());
    return known;
}

Ref<Property> FreshKeys::makeObject(Place key) const {
    return make<Property>(sharedName(key), value(key).toString());
}

Ref<OrderedStore> FreshKeys::toStore() const {
    auto store = make<OrderedStore>();
    store->reserve(static_cast<std::int32_t>(count()));
    for (std::uint32_t position = 0; position < count(); ++position) {
        prefetch(position + recordsAhead);
        if (const Place soon = at(position + recordsAhead / 2); soon != none)
            store->prefetch(arena()->hash(soon));
        const Place key = at(position);
        auto object = arena()->isReplaced(key) ? objects_[arena()->replacement(key)] : makeObject(key);
        String name = object->name();
        store->appendNew(std::move(object), std::move(name), arena()->hash(key));
    }
    return store;
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the store has the objects, unseen by it

} // namespace vlgs
