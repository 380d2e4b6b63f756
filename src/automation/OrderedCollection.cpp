#include "automation/OrderedCollection.h"

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

void OrderedCollection::Remove(const Variant& Index) {
    raiseFailure(store_->remove(Index));
}

} // namespace vlgs
