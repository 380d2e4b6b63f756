// SPDX-License-Identifier: MIT
#include "ini/Collection.h"

#include "ini/FreshKeys.h"

#include <new>

namespace vlgs {

namespace {

constexpr auto outOfMemory = static_cast<std::int32_t>(RunTimeError::OutOfMemory);

std::int32_t numberOf(OrderedStore::Failure failure) noexcept {
    return failure ? static_cast<std::int32_t>(*failure) : 0;
}

} // namespace

const ClassInfo& Collection::description() {
    return classInfoOf<Collection>();
}

Collection::Collection() = default;
Collection::~Collection() = default;

std::int32_t Collection::Count() const noexcept {
    return fresh_ ? static_cast<std::int32_t>(fresh_->count()) : store_ ? store_->count() : 0;
}

Variant Collection::Item(const Variant& Index) {
    if (const auto key = freshKey(Index))
        return *key == FreshKeys::none ? Variant() : Variant(Ref<Property>(objectOf(*key)));
    const Variant* member = Count() > 0 ? Store()->read(Index).member : nullptr;
    return member ? *member : Variant();
}

std::int32_t Collection::Remove(const Variant& Index) try {
    return numberOf(Store()->remove(Index));
} catch (const std::bad_alloc&) {
    return outOfMemory;
}

std::int32_t Collection::Add(const Variant& Item, const String& key, const Variant& Before,
                             const Variant& After) try {
    return numberOf(Store()->add(Item, key, Before, After));
} catch (const std::bad_alloc&) {
    return outOfMemory;
}

bool Collection::IsPresent(const Variant& Index) {
    if (const auto key = freshKey(Index))
        return *key != FreshKeys::none;
    return Count() > 0 && Store()->read(Index).member;
}

Ref<Enumerator> Collection::NewEnum() {
    return Store()->enumerate();
}

const Ref<OrderedStore>& Collection::Store() {
    if (fresh_) {
        store_ = fresh_->toStore();
        fresh_.reset();
    } else if (!store_) {
        store_ = make<OrderedStore>();
    }
    return store_;
}

void Collection::SetStore(Ref<OrderedStore> store) noexcept {
    fresh_.reset();
    store_ = std::move(store);
}

Property* Collection::property(const Variant& index) {
    if (const auto key = freshKey(index))
        return *key == FreshKeys::none ? nullptr : objectOf(*key);
    return Count() > 0 ? objectIn<Property>(Store()->read(index).member) : nullptr;
}

Property* Collection::property(std::u16string_view key) {
    if (!fresh_)
        return store_ ? objectIn<Property>(store_->withKey(key)) : nullptr;
    const auto found = fresh_->find(key);
    return found == FreshKeys::none ? nullptr : objectOf(found);
}

FreshKeys* Collection::freshIn(const Ref<TextArena>& arena) {
    if (!fresh_ && !store_)
        fresh_ = std::make_unique<FreshKeys>(arena);
    return fresh_.get();
}

Property* Collection::setFresh(StoredText name, StoredText value) {
    const auto known = fresh_->findOrAdd(name, value);
    if (known == FreshKeys::none)
        return objectOf(fresh_->at(fresh_->count() - 1));
    Property* key = objectOf(known);
    key->LetValue(value.toString());
    return key;
}

// The object is there for good; when there are many of them they move into a store.
Property* Collection::objectOf(std::uint32_t key) {
    Property& object = fresh_->object(key);
    if (fresh_->isWorn())
        Store();
    return &object;
}

// The fresh key that a text or a whole number names, or none. Nothing when a store has to be asked.
std::optional<std::uint32_t> Collection::freshKey(const Variant& index) const noexcept {
    if (fresh_ && index.isString())
        return fresh_->find(index.text().view());
    if (fresh_ && index.is(VarType::Long))
        return fresh_->at(static_cast<std::uint32_t>(index.number()) - 1);
    if (fresh_ && index.is(VarType::Integer))
        return fresh_->at(static_cast<std::uint32_t>(index.integer()) - 1);
    return {};
}

} // namespace vlgs
