// SPDX-License-Identifier: MIT
// The library's ordered, keyed container. It never raises for a member that is not there: a failure is the
// number that a member answers, or Empty.
//
// Its members stand in a general store or, as long as they are the keys of a section or the sections of a
// document just as they were read, in FreshKeys or FreshSections. Nobody can tell from outside.
#pragma once

#include "frame/Component.h"
#include "ini/Property.h"

#include <memory>
#include <type_traits>
#include <typeinfo>
#include <variant>

namespace vlgs {

class FreshKeys;
class FreshNames;
class FreshSections;
class OrderedStore;
class TextArena;

/// The object of class T that a member of a store holds; null for no member and for anything else.
template <class T>
T* objectIn(const Variant* member) noexcept {
    static_assert(std::is_final_v<T>);
    Object* object = member && member->isObject() ? member->object() : nullptr;
    return object && typeid(*object) == typeid(T) ? static_cast<T*>(object) : nullptr;
}

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
                optional("After", "the member behind which the new one goes; not together with Before"))
                .answersErrors(),
            get<&Collection::IsPresent>(4, "IsPresent",
                                        "Whether there is a member at a position or with a key",
                                        parameter("Index", "a position from 1, or a key in any case")),
            method<&Collection::NewEnum>(enumerationMember, "NewEnum",
                                         "An enumerator over the members in order"),
            identity(ordinaryClassName));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    Collection();
    ~Collection() override;

    std::int32_t Count() const noexcept;

    /// The member that `Index` names: a number is a position from 1, a text is a key in any case. Empty when
    /// there is none, whatever the reason.
    Variant Item(const Variant& Index);

    /// Answers 0, or 5 for a key that is not present, 9 for a position out of range, 13 for another index.
    std::int32_t Remove(const Variant& Index);

    /// Adds before or after the member that a reference names, else at the end. A left-out key is the empty
    /// key, which only one member can have. Answers 0, or, with nothing added, 457 for a key that is present,
    /// 5 for a reference that names no member or for both references, 13 for a reference that is neither
    /// number nor text.
    std::int32_t Add(const Variant& Item, const String& key = {}, const Variant& Before = missing,
                     const Variant& After = missing);

    bool IsPresent(const Variant& Index);

    /// Yields the members by position; see OrderedStore::enumerate for changes meanwhile.
    Ref<Enumerator> NewEnum();

    // ---- Within the library ----

    /// The store behind the members, made now if there was none.
    const Ref<OrderedStore>& Store();
    void SetStore(Ref<OrderedStore> store) noexcept;

    /// The member at a position or with a key if it is a Property, else null.
    Property* property(const Variant& index);
    Property* property(std::u16string_view key);

    /// The name and the value of the member at a position from 0; nothing when that is no Property. No object
    /// is made of a key only to be asked.
    std::optional<String> nameAt(std::uint32_t position);
    std::optional<Variant> valueAt(std::uint32_t position);

    /// Another number, never 0, once members were added or removed; their names do not change.
    std::uint64_t changes() const noexcept {
        return (std::uint64_t{removals_} + 1) << 32 | static_cast<std::uint32_t>(Count());
    }

    /// The members as they were read, null when they are something else.
    FreshKeys* freshKeys() const noexcept;
    FreshSections* freshSections() const noexcept;
    /// The same, begun in that arena when there are no members yet.
    FreshKeys* freshKeysIn(const Ref<TextArena>& arena);
    FreshSections* freshSectionsIn(const Ref<TextArena>& arena);
    /// REQUIRES: there are no members yet.
    void takeFresh(FreshKeys&& keys);
    /// The object of a fresh member.
    Property* objectOf(std::uint32_t place);

  private:
    // A null store, and neither of the others, stands for no members.
    using Members =
        std::variant<Ref<OrderedStore>, std::unique_ptr<FreshKeys>, std::unique_ptr<FreshSections>>;

    const FreshNames* fresh() const noexcept;
    bool isUnused() const noexcept;
    std::uint32_t freshPlace(const Variant& index) const noexcept;
    /// The member that an index names in the general store, null when there is none.
    const Variant* storedMember(const Variant& index);
    Property* storedAt(std::uint32_t position) const noexcept;

    Members members_;
    std::uint32_t removals_ = 0; // additions show in the number of members
};

} // namespace vlgs
