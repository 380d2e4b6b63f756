// SPDX-License-Identifier: MIT
#include "automation/Dictionary.h"

#include "automation/Convert.h"
#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "base/HashIndex.h"
#include "base/KeyedHash.h"
#include "base/WideNumber.h"

#include <algorithm>
#include <bit>

namespace vlgs {

namespace {

constexpr auto none = HashIndex::none;

// What keys can be the same as each other; of the kinds that are not here, only keys of one type.
enum class KeyKind : std::uint8_t { Empty, Null, Text, Number, Object, Error, Unusable };

KeyKind kindOf(const Variant& key) {
    switch (key.type()) {
    case VarType::Empty:
        return KeyKind::Empty;
    case VarType::Null:
        return KeyKind::Null;
    case VarType::String:
        return KeyKind::Text;
    case VarType::Integer:
    case VarType::Long:
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Date:
    case VarType::Boolean:
    case VarType::Decimal:
    case VarType::Byte:
        return KeyKind::Number;
    case VarType::Object:
        return KeyKind::Object;
    case VarType::Error:
        return KeyKind::Error;
    default:
        return KeyKind::Unusable;
    }
}

// The same number with as few decimal places as it needs.
Decimal shortest(Decimal number) {
    WideNumber magnitude(number.high, number.low);
    for (WideNumber shorter = magnitude; number.scale > 0 && shorter.takeDigit() == '0'; --number.scale)
        magnitude = shorter;
    number.high = magnitude.high();
    number.low = magnitude.low();
    if (number.high == 0 && number.low == 0)
        number.sign = 0;
    return number;
}

double numberOf(const Variant& key) {
    return key.is(VarType::Decimal) ? toDouble(shortest(key.decimal())) : toDouble(key);
}

bool sameNumber(const Variant& a, const Variant& b) {
    if (a.type() != b.type())
        return numberOf(a) == numberOf(b);
    return a.is(VarType::Decimal) ? shortest(a.decimal()) == shortest(b.decimal()) : a == b;
}

// Writes a property of the dictionary that holds the contents.
template <class... Values>
void write(const Ref<Object>& holder, std::u16string_view name, const Values&... values) {
    Variant arguments[] = {Variant(values)...};
    const bool isObject = arguments[sizeof...(Values) - 1].is(VarType::Object);
    callMember(holder, name, isObject ? InvokeKind::PropertyPutRef : InvokeKind::PropertyPut, {arguments});
}

ArrayOf<Variant> variantsOf(const Variant& array) {
    if (!array.isArray())
        raise(RunTimeError::TypeMismatch);
    std::vector<Variant> values(array.array().size());
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = array.array().at(i);
    return Array::ofVariants(std::move(values));
}

} // namespace

class Dictionary::KeyEnumerator final : public Enumerator {
  public:
    explicit KeyEnumerator(Ref<const Dictionary> dictionary, std::size_t next = 0)
        : dictionary_(std::move(dictionary)), next_(next) {
        ++dictionary_->enumerators_;
    }
    ~KeyEnumerator() override { --dictionary_->enumerators_; }

    bool next(Variant& item) override {
        const auto& entries = dictionary_->entries_;
        while (next_ < entries.size() && !entries[next_].live)
            ++next_;
        if (next_ >= entries.size())
            return false;
        item = entries[next_++].key;
        return true;
    }
    void reset() override { next_ = 0; }
    Ref<Enumerator> clone() const override { return make<KeyEnumerator>(dictionary_, next_); }

  private:
    Ref<const Dictionary> dictionary_;
    std::size_t next_;
};

const ClassInfo& Dictionary::description() {
    return classInfoOf<Dictionary>();
}

Dictionary::Dictionary() : index_(std::make_unique<HashIndex>()) {}
Dictionary::~Dictionary() = default;

Variant Dictionary::Item(const Variant& Key) {
    if (holder_)
        return call(holder_, u"Item", Key);
    const std::uint64_t hash = hashOf(Key);
    const std::uint32_t entry = locate(Key, hash);
    return entry == none ? append(Key, hash, {}).item : entries_[entry].item;
}

void Dictionary::PutItem(const Variant& Key, const Variant& Item) {
    if (holder_)
        return write(holder_, u"Item", Key, Item);
    const std::uint64_t hash = hashOf(Key);
    const std::uint32_t entry = locate(Key, hash);
    if (entry == none) {
        append(Key, hash, Item);
    } else {
        Variant item = Item; // ends up with the old item, which goes when all is done
        entries_[entry].item.swap(item);
    }
}

void Dictionary::Add(const Variant& Key, const Variant& Item) {
    if (holder_) {
        call(holder_, u"Add", Key, Item);
        return;
    }
    const std::uint64_t hash = hashOf(Key);
    if (locate(Key, hash) != none)
        raise(RunTimeError::KeyAlreadyPresent);
    append(Key, hash, Item);
}

bool Dictionary::Exists(const Variant& Key) const {
    if (holder_)
        return toBoolean(call(holder_, u"Exists", Key));
    return locate(Key, hashOf(Key)) != none;
}

template <class Part>
ArrayOf<Variant> Dictionary::collect(Part Entry::*part) const {
    std::vector<Variant> values;
    values.reserve(index_->size());
    for (const Entry& entry : entries_)
        if (entry.live)
            values.push_back(entry.*part);
    return Array::ofVariants(std::move(values));
}

ArrayOf<Variant> Dictionary::Items() const {
    if (holder_)
        return variantsOf(call(holder_, u"Items"));
    return collect(&Entry::item);
}
ArrayOf<Variant> Dictionary::Keys() const {
    if (holder_)
        return variantsOf(call(holder_, u"Keys"));
    return collect(&Entry::key);
}

void Dictionary::PutKey(const Variant& Key, const Variant& NewKey) {
    if (holder_)
        return write(holder_, u"Key", Key, NewKey);
    const std::uint64_t hash = hashOf(Key);
    const std::uint64_t newHash = hashOf(NewKey);
    const std::uint32_t entry = locate(Key, hash);
    if (entry == none)
        throw Error(elementNotFound, {}, u"Element not found");
    const std::uint32_t other = locate(NewKey, newHash);
    if (other != none && other != entry)
        raise(RunTimeError::KeyAlreadyPresent);
    Variant key = NewKey;
    index_->erase(hash, entry);
    index_->insert(newHash, entry);
    entries_[entry].key.swap(key);
}

void Dictionary::Remove(const Variant& Key) {
    if (holder_) {
        call(holder_, u"Remove", Key);
        return;
    }
    const std::uint64_t hash = hashOf(Key);
    const std::uint32_t entry = locate(Key, hash);
    if (entry == none)
        throw Error(elementNotFound, {}, u"Element not found");
    index_->erase(hash, entry);
    // The item ends when all is done: its end may run code that comes back to this dictionary.
    const Entry gone = std::exchange(entries_[entry], {{}, {}, false});
}

void Dictionary::RemoveAll() noexcept {
    try {
        if (holder_)
            call(holder_, u"RemoveAll");
    } catch (...) {
        // A dictionary has no reason not to let go of its contents.
    }
    const std::vector<Entry> gone = std::exchange(entries_, {});
    index_->clear();
}

std::int32_t Dictionary::Count() const {
    return holder_ ? toLong(call(holder_, u"Count")) : static_cast<std::int32_t>(index_->size());
}

std::int32_t Dictionary::CompareMode() const {
    return holder_ ? toLong(call(holder_, u"CompareMode")) : compareMode_;
}

void Dictionary::PutCompareMode(std::int32_t Mode) {
    if (holder_)
        return write(holder_, u"CompareMode", Mode);
    if (index_->size() > 0 || Mode < 0)
        raise(RunTimeError::InvalidProcedureCall);
    compareMode_ = Mode;
}

Ref<Enumerator> Dictionary::NewEnum() const {
    if (holder_)
        return enumerate(holder_);
    return make<KeyEnumerator>(Ref<const Dictionary>(this));
}

void Dictionary::moveInto(Ref<Object> other) {
    if (compareMode_ != binaryCompare)
        write(other, u"CompareMode", compareMode_);
    for (const Entry& entry : entries_)
        if (entry.live)
            call(other, u"Add", entry.key, entry.item);
    RemoveAll();
    holder_ = std::move(other);
}

std::uint64_t Dictionary::hashOf(const Variant& key) const {
    const KeyKind kind = kindOf(key);
    if (kind == KeyKind::Text)
        return compareMode_ == binaryCompare ? hashExactly(key.text()) : hashIgnoringCase(key.text());
    KeyedHash hash;
    hash.add(static_cast<std::uint64_t>(kind));
    switch (kind) {
    case KeyKind::Number:
        hash.add(std::bit_cast<std::uint64_t>(numberOf(key) + 0.0)); // -0 and 0 are one number
        break;
    case KeyKind::Object:
        hash.add(reinterpret_cast<std::uintptr_t>(key.object()));
        break;
    case KeyKind::Error:
        hash.add(static_cast<std::uint64_t>(key.status()));
        break;
    case KeyKind::Unusable:
        raise(RunTimeError::InvalidProcedureCall);
    default:
        break;
    }
    return hash.finish();
}

bool Dictionary::same(const Variant& a, const Variant& b) const {
    const KeyKind kind = kindOf(a);
    if (kind != kindOf(b))
        return false;
    if (kind == KeyKind::Text && compareMode_ != binaryCompare)
        return equalIgnoringCase(a.text(), b.text());
    return kind == KeyKind::Number ? sameNumber(a, b) : a == b;
}

std::uint32_t Dictionary::locate(const Variant& key, std::uint64_t hash) const {
    return index_->find(hash, [&](std::uint32_t entry) { return same(entries_[entry].key, key); });
}

Dictionary::Entry& Dictionary::append(const Variant& key, std::uint64_t hash, Variant item) {
    Entry entry{key, std::move(item)};
    if (entries_.size() == entries_.capacity() && entries_.size() / 2 > index_->size() && enumerators_ == 0)
        closeUp();
    index_->reserve(1);
    entries_.push_back(std::move(entry));
    index_->insert(hash, static_cast<std::uint32_t>(entries_.size() - 1));
    return entries_.back();
}

// Drops the dead entries.
void Dictionary::closeUp() {
    std::vector<std::uint32_t> numbers(entries_.size(), none);
    std::uint32_t live = 0;
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].live)
            numbers[i] = live++;
    index_->renumber(numbers);
    std::erase_if(entries_, [](const Entry& entry) { return !entry.live; });
}

} // namespace vlgs
