// SPDX-License-Identifier: MIT
#include "automation/OrderedStore.h"

#include "automation/Convert.h"

namespace vlgs {

namespace {

using Place = KeyedSequence<Variant>::Place;

class StoreEnumerator final : public Enumerator {
  public:
    explicit StoreEnumerator(Ref<const OrderedStore> store, std::int32_t given = 0)
        : store_(std::move(store)), given_(given) {}

    bool next(Variant& item) override {
        if (given_ >= store_->count())
            return false;
        item = *store_->at(++given_);
        return true;
    }
    void reset() override { given_ = 0; }
    Ref<Enumerator> clone() const override { return make<StoreEnumerator>(store_, given_); }

  private:
    Ref<const OrderedStore> store_;
    std::int32_t given_;
};

Place placeAt(const KeyedSequence<Variant>& members, double position) noexcept {
    return position >= 1 && position <= members.size() ? members.at(static_cast<std::uint32_t>(position) - 1)
                                                       : Place();
}

bool isPosition(const Variant& index) noexcept {
    switch (index.type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Byte:
    case VarType::Boolean:
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Decimal:
        return true;
    default:
        return false;
    }
}

/// The member that an index names.
Place select(const KeyedSequence<Variant>& members, const Variant& index) noexcept {
    if (index.isString())
        return members.find(index.text());
    if (index.type() == VarType::Long)
        return placeAt(members, index.number());
    return isPosition(index) ? placeAt(members, roundHalfToEven(toDouble(index))) : Place();
}

/// Why an index names no member.
RunTimeError failureOf(const Variant& index) noexcept {
    if (index.isString())
        return RunTimeError::InvalidProcedureCall;
    return isPosition(index) ? RunTimeError::SubscriptOutOfRange : RunTimeError::TypeMismatch;
}

} // namespace

OrderedStore::Reading OrderedStore::read(const Variant& index) const noexcept {
    const Place place = select(members_, index);
    if (!place)
        return {nullptr, failureOf(index)};
    return {&members_[place], {}};
}

OrderedStore::Failure OrderedStore::add(Variant item, std::optional<String> key, const Variant& before,
                                        const Variant& after) {
    const std::uint64_t prepared = members_.prepare(key);
    Members::Target target;
    target.behind = before.isMissing();
    const Variant& reference = target.behind ? after : before;
    if (!target.behind && !after.isMissing())
        return RunTimeError::InvalidProcedureCall;
    if (!reference.isMissing()) {
        target.reference = select(members_, reference);
        if (!target.reference)
            return failureOf(reference) == RunTimeError::TypeMismatch ? RunTimeError::TypeMismatch
                                                                      : RunTimeError::InvalidProcedureCall;
    }
    if (!members_.add(std::move(item), std::move(key), prepared, target))
        return RunTimeError::KeyAlreadyPresent;
    return {};
}

OrderedStore::Failure OrderedStore::remove(const Variant& index) {
    const Place place = select(members_, index);
    if (!place)
        return failureOf(index);
    members_.remove(place);
    return {};
}

Ref<Enumerator> OrderedStore::enumerate() const {
    return make<StoreEnumerator>(Ref<const OrderedStore>(this));
}

} // namespace vlgs
