// The library's ordered, keyed container. It never raises for a member that is not there: a failure is the
// number that a member answers, or Empty.
#pragma once

#include "automation/OrderedStore.h"
#include "frame/Component.h"

namespace vlgs {

class VLGS_API Collection final : public CountedComponent {
  public:
    static constexpr auto describe() {
        return describeClass<Collection>(
            {.name = "Collection",
             .help = "Members in order, found by position or by key",
             .number = eInterfaceID_Collection,
             .classId = guid("274208F1-E69F-4D20-9FAB-A3755A3E41D7"),
             .interfaceId = guid("EA281A7E-934C-4BD1-8F57-7AFDAFBD7B28"),
             .creatable = true},
            get<&Collection::Count>(1, "Count", "The number of members"),
            get<&Collection::Item>(defaultMember, "Item",
                                   "The member at a position or with a key; Empty when there is none",
                                   parameter("Index", "a position from 1, or a key in any case")),
            method<&Collection::Remove>(2, "Remove", "Removes a member; answers 0 or the number of the error",
                                        parameter("Index", "a position from 1, or a key in any case")),
            method<&Collection::Add>(
                3, "Add", "Adds a member; answers 0 or the number of the error",
                parameter("Item", "any value or object"),
                optional("key", "a name for it; left out, the empty key, which only one member can have"),
                optional("Before",
                         "the member before which the new one goes: its position from 1 or its key"),
                optional("After", "the member behind which the new one goes; not together with Before")),
            get<&Collection::IsPresent>(4, "IsPresent",
                                        "Whether there is a member at a position or with a key",
                                        parameter("Index", "a position from 1, or a key in any case")),
            method<&Collection::NewEnum>(enumerationMember, "NewEnum",
                                         "An enumerator over the members in order"),
            identity(ordinaryClassName));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    std::int32_t Count() const noexcept { return store_ ? store_->count() : 0; }

    /// The member that `Index` names: a number is a position from 1, a text is a key in any case. Empty when
    /// there is none, whatever the reason.
    Variant Item(const Variant& Index) const;

    /// Answers 0, or 5 for a key that is not present, 9 for a position out of range, 13 for another index.
    std::int32_t Remove(const Variant& Index);

    /// Adds before or after the member that a reference names, else at the end. A left-out key is the empty
    /// key, which only one member can have. Answers 0, or, with nothing added, 457 for a key that is present,
    /// 5 for a reference that names no member or for both references, 13 for a reference that is neither
    /// number nor text.
    std::int32_t Add(const Variant& Item, const String& key = {}, const Variant& Before = missing,
                     const Variant& After = missing);

    bool IsPresent(const Variant& Index) const;

    /// Yields the members by position; see OrderedStore::enumerate for changes meanwhile.
    Ref<Enumerator> NewEnum();

    /// The store behind the members, made now if there was none.
    const Ref<OrderedStore>& Store();
    /// The store as it is, null when there was none yet.
    const OrderedStore* store() const noexcept { return store_.get(); }
    void SetStore(Ref<OrderedStore> store) noexcept { store_ = std::move(store); }

  private:
    Ref<OrderedStore> store_;
};

} // namespace vlgs
