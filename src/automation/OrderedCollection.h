// SPDX-License-Identifier: MIT
// The run time's ordered collection: members in order, found by position from 1 or by key without regard to
// case. Its members raise the run time's errors; a left-out key is no key.
#pragma once

#include "automation/ClassDescription.h"

namespace vlgs {

class OrderedStore;

class VLGS_API OrderedCollection final : public Object {
  public:
    static constexpr auto describe() {
        return describeClass<OrderedCollection>(
            {.name = "Collection",
             .help = "Members in order, found by position or by key",
             .classId = guid("4E8DDF7B-4873-47E4-94B8-BB385752561B"),
             .interfaceId = guid("3E2FEC52-A9E2-4526-9CB0-4974B1FA38DC"),
             .library = "VBA"},
            method<&OrderedCollection::Item>(defaultMember, "Item", "The member at a position or with a key",
                                             parameter("Index", "a position from 1, or a key in any case"))
                .raises(RunTimeError::InvalidProcedureCall, "the key is not present")
                .raises(RunTimeError::SubscriptOutOfRange, "the position is out of range")
                .raises(RunTimeError::TypeMismatch, "the index is neither a number nor a text"),
            method<&OrderedCollection::Add>(
                1, "Add", "Adds a member", parameter("Item", "any value or object"),
                optional("Key", "a name for it"),
                optional("Before",
                         "the member before which the new one goes: its position from 1 or its key"),
                optional("After", "the member behind which the new one goes; not together with Before"))
                .raises(RunTimeError::KeyAlreadyPresent, "the key is present")
                .raises(RunTimeError::InvalidProcedureCall,
                        "Before or After names no member, or both are given")
                .raises(RunTimeError::TypeMismatch,
                        "the key is no text, or Before or After neither a number nor a text"),
            get<&OrderedCollection::Count>(2, "Count", "The number of members"),
            method<&OrderedCollection::Remove>(3, "Remove", "Removes a member",
                                               parameter("Index", "a position from 1, or a key in any case"))
                .raises(RunTimeError::InvalidProcedureCall, "the key is not present")
                .raises(RunTimeError::SubscriptOutOfRange, "the position is out of range")
                .raises(RunTimeError::TypeMismatch, "the index is neither a number nor a text"),
            method<&OrderedCollection::NewEnum>(enumerationMember, "_NewEnum",
                                                "An enumerator over the members in order")
                .hidden());
    }
    static const ClassInfo& description();
    OrderedCollection();
    ~OrderedCollection() override;
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    Variant Item(const Variant& Index) const;

    /// Adds before or after the member that a reference names, else at the end.
    void Add(const Variant& Item, const Variant& Key = missing, const Variant& Before = missing,
             const Variant& After = missing);

    std::int32_t Count() const noexcept;

    void Remove(const Variant& Index);

    /// Yields the members by position; see OrderedStore::enumerate for changes meanwhile.
    Ref<Enumerator> NewEnum() const;

    const Ref<OrderedStore>& store() const noexcept;

  private:
    Ref<OrderedStore> store_;
};

} // namespace vlgs
