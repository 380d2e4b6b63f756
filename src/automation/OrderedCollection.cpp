// SPDX-License-Identifier: MIT
#include "automation/OrderedCollection.h"

#include "automation/OrderedStore.h"

namespace vlgs {

namespace {

void raiseFailure(OrderedStore::Failure failure) {
    if (failure)
        raise(*failure);
}

} // namespace

const ClassInfo& OrderedCollection::description() {
    return classInfoOf<OrderedCollection>();
}

OrderedCollection::OrderedCollection() : store_(make<OrderedStore>()) {}
OrderedCollection::~OrderedCollection() = default;

Variant OrderedCollection::Item(const Variant& Index) const {
    const auto [member, failure] = store_->read(Index);
    raiseFailure(failure);
    return *member;
}

void OrderedCollection::Add(const Variant& Item, const Variant& Key, const Variant& Before,
                            const Variant& After) {
    std::optional<String> key;
    if (Key.isString())
        key = Key.text();
    else if (!Key.isMissing())
        raise(RunTimeError::TypeMismatch);
    raiseFailure(store_->add(Item, std::move(key), Before, After));
}

std::int32_t OrderedCollection::Count() const noexcept {
    return store_->count();
}

void OrderedCollection::Remove(const Variant& Index) {
    raiseFailure(store_->remove(Index));
}

Ref<Enumerator> OrderedCollection::NewEnum() const {
    return store_->enumerate();
}

const Ref<OrderedStore>& OrderedCollection::store() const noexcept {
    return store_;
}

} // namespace vlgs
