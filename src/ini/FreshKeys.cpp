// SPDX-License-Identifier: MIT
#include "ini/FreshKeys.h"

#include <algorithm>

namespace vlgs {

FreshKeys::Place FreshKeys::find(StoredText name) const noexcept {
    return find(name, index_.exists() ? hashIgnoringCase(name) : 0);
}

FreshKeys::Place FreshKeys::find(StoredText name, std::uint64_t hash) const noexcept {
    const auto same = [&](Place key) { return equalIgnoringCase(arena_->name(key), name); };
    if (index_.exists())
        return index_.find(hash, same);
    const auto found = std::find_if(places_.begin(), places_.end(), same);
    return found == places_.end() ? none : *found;
}

FreshKeys::Place FreshKeys::findOrAdd(StoredText name, StoredText value) {
    const std::uint64_t hash = index_.exists() || places_.size() == scanned ? hashIgnoringCase(name) : 0;
    const Place key = find(name, hash);
    if (key == none)
        add(name, value, hash);
    return key;
}

// Whatever may fail for want of memory comes before the first change.
void FreshKeys::add(StoredText name, StoredText value, std::uint64_t hash) {
    if (places_.size() == scanned)
        beginIndex();
    else if (index_.exists())
        index_.reserve(1);
    if (places_.size() == places_.capacity())
        places_.reserve(std::max<std::size_t>(4, places_.size() * 2));
    const Place key = arena_->add(name, value);
    places_.push_back(key);
    if (index_.exists())
        index_.insert(hash, key);
}

void FreshKeys::beginIndex() {
    HashIndex index;
    index.reserve(scanned + 1);
    for (const Place key : places_)
        index.insert(hashIgnoringCase(arena_->name(key)), key);
    index_ = std::move(index);
}

Property& FreshKeys::object(Place key) {
    if (arena_->isReplaced(key))
        return *objects_[arena_->replacement(key)];
    objects_.push_back(makeObject(key));
    arena_->replaceValue(key, static_cast<std::uint32_t>(objects_.size() - 1));
    return *objects_.back();
}

Ref<Property> FreshKeys::makeObject(Place key) const {
    const StoredText name = arena_->name(key);
    auto object = make<Property>();
    object->SetName(
        name.visit([&](auto text) { return arena_->names().share(text, [&] { return name.toString(); }); }));
    object->LetValue(arena_->value(key).toString());
    return object;
}

Ref<OrderedStore> FreshKeys::toStore() const {
    auto store = make<OrderedStore>();
    for (const Place key : places_) {
        auto object = arena_->isReplaced(key) ? objects_[arena_->replacement(key)] : makeObject(key);
        String name = object->Name();
        store->add(std::move(object), std::move(name));
    }
    return store;
}

} // namespace vlgs
