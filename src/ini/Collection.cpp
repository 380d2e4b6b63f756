// SPDX-License-Identifier: MIT
#include "ini/Collection.h"

#include "automation/OutsideObject.h"
#include "ini/FreshKeys.h"
#include "ini/FreshSections.h"

#include <algorithm>
#include <new>
#include <utility>

namespace vlgs {

namespace {

/// Says that a store has to be asked; no record stands there.
constexpr std::uint32_t notFresh = FreshNames::none - 1;

constexpr auto outOfMemory = static_cast<std::int32_t>(RunTimeError::OutOfMemory);

std::int32_t numberOf(OrderedStore::Failure failure) noexcept {
    return failure ? static_cast<std::int32_t>(*failure) : 0;
}

/// Whether a member can be handed out: an array of objects that cannot be called cannot.
bool isReadable(const Variant& member) {
    if (!member.isArray() || !member.array().holds<Ref<Object>>())
        return true;
    return std::ranges::all_of(member.array().as<Ref<Object>>(), [](const Ref<Object>& object) {
        const auto* outside = dynamic_cast<const OutsideObject*>(object.get());
        return !outside || outside->takesCalls();
    });
}

} // namespace

const ClassInfo& Collection::description() {
    return classInfoOf<Collection>();
}

Collection::Collection() = default;
Collection::~Collection() = default;

std::int32_t Collection::Count() const noexcept {
    if (const auto* names = fresh())
        return static_cast<std::int32_t>(names->count());
    const auto& store = *std::get_if<Ref<OrderedStore>>(&members_);
    return store ? store->count() : 0;
}

Variant Collection::Item(const Variant& Index) {
    if (const auto place = freshPlace(Index); place != notFresh)
        return place == FreshNames::none ? Variant() : Variant(Ref<Property>(objectOf(place)));
    const Variant* member = storedMember(Index);
    return member && isReadable(*member) ? *member : Variant();
}

std::int32_t Collection::Remove(const Variant& Index) try {
    const auto failure = Store()->remove(Index);
    removals_ += !failure;
    return numberOf(failure);
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
    if (const auto place = freshPlace(Index); place != notFresh)
        return place != FreshNames::none;
    return storedMember(Index);
}

Ref<Enumerator> Collection::NewEnum() {
    return Store()->enumerate();
}

const Ref<OrderedStore>& Collection::Store() {
    if (const auto* keys = freshKeys())
        members_ = keys->toStore();
    else if (auto* sections = freshSections())
        members_ = sections->toStore();
    auto& store = std::get<Ref<OrderedStore>>(members_);
    if (!store)
        store = make<OrderedStore>();
    return store;
}

void Collection::SetStore(Ref<OrderedStore> store) noexcept {
    ++removals_;
    const Members gone = std::exchange(members_, std::move(store)); // may run code as it ends
}

Property* Collection::property(const Variant& index) {
    if (const auto place = freshPlace(index); place != notFresh)
        return place == FreshNames::none ? nullptr : objectOf(place);
    return objectIn<Property>(storedMember(index));
}

Property* Collection::property(std::u16string_view key) {
    if (const auto* names = fresh()) {
        const auto place = names->find(key);
        return place == FreshNames::none ? nullptr : objectOf(place);
    }
    const auto& store = std::get<Ref<OrderedStore>>(members_);
    return store ? objectIn<Property>(store->withKey(key)) : nullptr;
}

// REQUIRES: there are no fresh members.
Property* Collection::storedAt(std::uint32_t position) const noexcept {
    const auto& store = *std::get_if<Ref<OrderedStore>>(&members_);
    return store ? objectIn<Property>(store->at(static_cast<std::int32_t>(position) + 1)) : nullptr;
}

std::optional<String> Collection::nameAt(std::uint32_t position) {
    if (const auto* names = fresh()) {
        const auto place = names->at(position);
        return place == FreshNames::none ? std::nullopt : std::optional(names->name(place).toString());
    }
    const auto* member = storedAt(position);
    return member ? std::optional(member->name()) : std::nullopt;
}

std::optional<Variant> Collection::valueAt(std::uint32_t position) {
    const Property* member = nullptr;
    if (const auto* names = fresh()) {
        const auto place = names->at(position);
        if (place == FreshNames::none)
            return std::nullopt;
        const auto* keys = freshKeys();
        member = keys ? keys->knownObject(place) : objectOf(place);
        if (!member)
            return Variant(keys->value(place).toString());
    } else {
        member = storedAt(position);
    }
    return member ? std::optional(member->value()) : std::nullopt;
}

FreshKeys* Collection::freshKeys() const noexcept {
    const auto* keys = std::get_if<std::unique_ptr<FreshKeys>>(&members_);
    return keys ? keys->get() : nullptr;
}

FreshSections* Collection::freshSections() const noexcept {
    const auto* sections = std::get_if<std::unique_ptr<FreshSections>>(&members_);
    return sections ? sections->get() : nullptr;
}

FreshKeys* Collection::freshKeysIn(const Ref<TextArena>& arena) {
    if (isUnused())
        takeFresh(FreshKeys(arena));
    return freshKeys();
}

FreshSections* Collection::freshSectionsIn(const Ref<TextArena>& arena) {
    if (isUnused())
        members_ = std::make_unique<FreshSections>(arena);
    return freshSections();
}

void Collection::takeFresh(FreshKeys&& keys) {
    members_ = std::make_unique<FreshKeys>(std::move(keys));
}

const FreshNames* Collection::fresh() const noexcept {
    if (const FreshNames* keys = freshKeys())
        return keys;
    return freshSections();
}

bool Collection::isUnused() const noexcept {
    const auto* store = std::get_if<Ref<OrderedStore>>(&members_);
    return store && !*store;
}

// The object is there for good; when there are many of them, the members move into a store.
Property* Collection::objectOf(std::uint32_t place) {
    const auto take = [&](auto& fresh) {
        Property& object = fresh.object(place);
        if (fresh.isWorn())
            Store();
        return &object;
    };
    auto* sections = freshSections();
    return sections ? take(*sections) : take(*freshKeys());
}

// The fresh member that a text or a whole number names, or none, or `notFresh`. (An optional would be put
// together in memory, and waited for, at each access.)
std::uint32_t Collection::freshPlace(const Variant& index) const noexcept {
    const auto* names = fresh();
    if (!names)
        return notFresh;
    if (index.isString())
        return names->find(index.text().view());
    if (index.is(VarType::Long))
        return names->at(static_cast<std::uint32_t>(index.number()) - 1);
    if (index.is(VarType::Integer))
        return names->at(static_cast<std::uint32_t>(index.integer()) - 1);
    return notFresh;
}

const Variant* Collection::storedMember(const Variant& index) {
    if (const auto* store = std::get_if<Ref<OrderedStore>>(&members_))
        return *store ? (*store)->read(index).member : nullptr;
    return Store()->read(index).member;
}

} // namespace vlgs
