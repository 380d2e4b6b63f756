// SPDX-License-Identifier: MIT
// The platform's scripting dictionary: items by keys of any plain type, in the order in which the keys were
// added.
//
// Two keys are the same when both are texts that are equal by the compare mode, both are numbers (Booleans
// and dates included) of equal value, or both are the same object, Empty, Null or the same error value. An
// array or record is no key: 5 is raised.
#pragma once

#include "automation/Array.h"
#include "automation/ClassDescription.h"

#include <memory>
#include <vector>

namespace vlgs {

class HashIndex;

class VLGS_API Dictionary final : public Object {
  public:
    static constexpr auto describe() {
        return describeClass<Dictionary>(
            {.name = "Dictionary",
             .help = "Items found by their keys",
             .classId = guid("9A9DDE82-23A3-4311-834B-F04BA757D1CA"),
             .interfaceId = guid("693E573A-268F-4E4D-ACCE-F5D553A39C82"),
             .creatable = true,
             .library = "Scripting"},
            putRef<&Dictionary::PutItem>(defaultMember, "Item", "The item of a key",
                                         parameter("Key", "any plain value or object"),
                                         parameter("Item", "any value or object")),
            put<&Dictionary::PutItem>(defaultMember, "Item", "The item of a key",
                                      parameter("Key", "any plain value or object"),
                                      parameter("Item", "any value or object")),
            get<&Dictionary::Item>(defaultMember, "Item", "The item of a key",
                                   parameter("Key", "any plain value or object"))
                .raises(RunTimeError::InvalidProcedureCall, "the key is an array or a record"),
            method<&Dictionary::Add>(1, "Add", "Adds an item under a new key",
                                     parameter("Key", "any plain value or object"),
                                     parameter("Item", "any value or object"))
                .raises(RunTimeError::KeyAlreadyPresent, "the key is present")
                .raises(RunTimeError::InvalidProcedureCall, "the key is an array or a record"),
            get<&Dictionary::Count>(2, "Count", "The number of items"),
            method<&Dictionary::Exists>(3, "Exists", "Whether there is an item with a key",
                                        parameter("Key", "any plain value or object")),
            method<&Dictionary::Items>(4, "Items", "An array of the items"),
            put<&Dictionary::PutKey>(5, "Key", "Gives an item another key",
                                     parameter("Key", "any plain value or object"),
                                     parameter("NewKey", "the key that takes its place"))
                .raises(32811, "the key is not present")
                .raises(RunTimeError::KeyAlreadyPresent, "another item has the new key"),
            method<&Dictionary::Keys>(6, "Keys", "An array of the keys"),
            method<&Dictionary::Remove>(7, "Remove", "Removes a key and its item",
                                        parameter("Key", "any plain value or object"))
                .raises(32811, "the key is not present"),
            method<&Dictionary::RemoveAll>(8, "RemoveAll", "Removes all keys and items"),
            put<&Dictionary::PutCompareMode>(
                9, "CompareMode", "How texts are compared",
                parameter("Mode", "0 compares texts exactly, any other without regard to case")),
            get<&Dictionary::CompareMode>(9, "CompareMode", "How texts are compared")
                .raises(RunTimeError::InvalidProcedureCall, "there are items, or the mode is negative"),
            method<&Dictionary::NewEnum>(enumerationMember, "_NewEnum", "An enumerator over the keys")
                .hidden());
    }
    static const ClassInfo& description();
    Dictionary();
    ~Dictionary() override;
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// Raised for a key that is not present.
    static constexpr std::int32_t elementNotFound = 32811;
    static constexpr std::int32_t binaryCompare = 0; // exactly; every other mode ignores case
    static constexpr std::int32_t textCompare = 1;

    /// The item of the key. A key that is not present is added, with Empty.
    Variant Item(const Variant& Key);
    /// Replaces the item of the key or adds the key.
    void PutItem(const Variant& Key, const Variant& Item);
    void Add(const Variant& Key, const Variant& Item);
    std::int32_t Count() const;
    bool Exists(const Variant& Key) const;
    /// Arrays of Variants from 0, in the order in which the keys were added.
    ArrayOf<Variant> Items() const;
    ArrayOf<Variant> Keys() const;
    /// Gives the item of `Key` another key; its place stays.
    void PutKey(const Variant& Key, const Variant& NewKey);
    void Remove(const Variant& Key);
    void RemoveAll() noexcept;
    std::int32_t CompareMode() const;
    void PutCompareMode(std::int32_t Mode);
    /// An enumerator over the keys. Keys that are removed meanwhile are left out, added ones come at the end.
    Ref<Enumerator> NewEnum() const;

    /// Gives the contents to another object with these members, the platform's own dictionary, which holds
    /// them from then on: this one only passes on what it is asked. Raises what the other raises and is then
    /// as before.
    void moveInto(Ref<Object> other);
    /// The dictionary that holds the contents in place of this one, or none.
    const Ref<Object>& holder() const noexcept { return holder_; }

  private:
    class KeyEnumerator;
    struct Entry {
        Variant key;
        Variant item;
        bool live = true;
    };

    std::uint64_t hashOf(const Variant& key) const;
    bool same(const Variant& a, const Variant& b) const;
    std::uint32_t locate(const Variant& key, std::uint64_t hash) const;
    Entry& append(const Variant& key, std::uint64_t hash, Variant item);
    void closeUp();
    template <class Part>
    ArrayOf<Variant> collect(Part Entry::*part) const;

    // In the order of addition. Removed entries stay, dead, until too many are; they are not closed up while
    // an enumerator stands among them.
    std::vector<Entry> entries_;
    std::unique_ptr<HashIndex> index_;
    std::int32_t compareMode_ = binaryCompare;
    mutable std::uint32_t enumerators_ = 0;
    Ref<Object> holder_;
};

} // namespace vlgs
