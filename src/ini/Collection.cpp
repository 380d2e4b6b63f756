#include "ini/Collection.h"

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

Variant Collection::Item(const Variant& Index) const {
    const Variant* member = store_ ? store_->read(Index).member : nullptr;
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

bool Collection::IsPresent(const Variant& Index) const {
    return store_ && store_->read(Index).member;
}

Ref<Enumerator> Collection::NewEnum() {
    return Store()->enumerate();
}

const Ref<OrderedStore>& Collection::Store() {
    if (!store_)
        store_ = make<OrderedStore>();
    return store_;
}

} // namespace vlgs
