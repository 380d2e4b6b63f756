// SPDX-License-Identifier: MIT
#include "ini/FreshSections.h"

#include <utility>

namespace vlgs {

FreshSections::Place FreshSections::findOrAdd(StoredText name) {
    if (bodies_.size() == bodies_.capacity())
        bodies_.reserve(std::max<std::size_t>(4, bodies_.size() * 2));
    if (const Place known = FreshNames::findOrAdd(name, {}); known != none)
        return known;
    const Place added = at(count() - 1);
    arena()->replaceValue(added, static_cast<std::uint32_t>(bodies_.size()));
    bodies_.push_back({FreshKeys(arena()), {}});
    return added;
}

Property& FreshSections::object(Place section) {
    Body& body = bodies_[arena()->replacement(section)];
    if (!body.object) {
        auto object = make<Property>();
        object->SetName(sharedName(section));
        auto keys = make<Collection>();
        keys->takeFresh(std::move(body.keys));
        object->SetValue(std::move(keys));
        body.object = std::move(object);
        ++objectCount_;
    }
    return *body.object;
}

Ref<OrderedStore> FreshSections::toStore() {
    auto store = make<OrderedStore>();
    store->reserve(static_cast<std::int32_t>(count()));
    for (std::uint32_t position = 0; position < count(); ++position) {
        const Place section = at(position);
        store->appendNew(Ref<Property>(&object(section)), sharedName(section), arena()->hash(section));
    }
    return store;
}

} // namespace vlgs
