#include "automation/OrderedStore.h"

#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/Error.h"

#include <algorithm>
#include <limits>
#include <new>

namespace vlgs {

namespace {

constexpr auto keyAlreadyPresent = static_cast<std::int32_t>(RunTimeError::KeyAlreadyPresent);
constexpr auto invalidArgument = static_cast<std::int32_t>(RunTimeError::InvalidProcedureCall);
constexpr auto outOfRange = static_cast<std::int32_t>(RunTimeError::SubscriptOutOfRange);
constexpr auto typeMismatch = static_cast<std::int32_t>(RunTimeError::TypeMismatch);

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

} // namespace

const Variant* OrderedStore::at(std::int32_t position) const noexcept {
    const std::uint32_t offset = static_cast<std::uint32_t>(position) - 1;
    if (offset >= count_)
        return nullptr;
    return &entries_[entryOf({Selection::Kind::Position, offset})].item;
}

const Variant* OrderedStore::withKey(std::u16string_view key) const noexcept {
    const std::uint32_t entry = findKey(key, index_.exists() ? hashIgnoringCase(key) : 0);
    return entry == none ? nullptr : &entries_[entry].item;
}

OrderedStore::Reading OrderedStore::read(const Variant& index) const noexcept {
    const Selection selection = select(index);
    if (selection.kind == Selection::Kind::Failure)
        return {nullptr, static_cast<std::int32_t>(selection.value)};
    return {&entries_[entryOf(selection)].item, 0};
}

std::int32_t OrderedStore::add(Variant item, std::optional<String> key, const Variant& before,
                               const Variant& after) {
    const bool indexed = key && !key->empty();
    const std::uint64_t hash = indexed ? hashIgnoringCase(*key) : 0;
    index_.prefetch(hash); // comes while the reference is looked up
    const Target target = targetOf(before, after);
    if (target.failure != 0)
        return target.failure;
    if (key && findKey(*key, hash) != none)
        return keyAlreadyPresent;
    if (entries_.size() >= std::numeric_limits<std::int32_t>::max())
        throw std::bad_alloc();

    // Whatever may fail for want of memory comes before the first change.
    const auto entry = static_cast<std::uint32_t>(entries_.size());
    if (entries_.capacity() == entries_.size())
        entries_.reserve(std::max<std::size_t>(4, entries_.size() * 2));
    reserveIndex(indexed);
    if (index_.exists())
        hashes_.reserve(entries_.capacity());
    if (order_ || !target.atEnd)
        insertIntoOrder(target, entry);

    if (index_.exists())
        hashes_.push_back(static_cast<std::uint32_t>(hash));
    if (indexed && index_.exists())
        index_.insert(hash, entry);
    else if (key && key->empty())
        emptyKeyEntry_ = entry;
    entries_.push_back({std::move(item), key ? std::move(*key) : String()});
    ++count_;
    return 0;
}

std::int32_t OrderedStore::remove(const Variant& index) {
    if (entries_.size() > 64 && entries_.size() / 3 > count_)
        compact();
    const Selection selection = select(index);
    if (selection.kind == Selection::Kind::Failure)
        return static_cast<std::int32_t>(selection.value);
    const std::uint32_t entry = entryOf(selection);
    const bool last = !order_ && entry + 1 == count_;
    if (!order_ && !last)
        order_ = std::make_unique<PositionTree>(count_);

    // The item ends when all is done: its end may run code that comes back to this store.
    const Entry gone = std::move(entries_[entry]);
    const bool indexed = index_.exists() && !gone.key.empty();
    const std::uint64_t hash = indexed ? hashes_[entry] : 0;
    index_.prefetch(hash); // comes while the order is changed, as does the key that ends below
    __builtin_prefetch(gone.key.data());
    if (last) {
        entries_.pop_back();
        if (index_.exists())
            hashes_.pop_back();
    } else {
        order_->erase(placeOf(selection));
    }
    if (indexed)
        index_.erase(hash, entry);
    else if (entry == emptyKeyEntry_)
        emptyKeyEntry_ = none;
    if (--count_ == 0)
        clear();
    return 0;
}

void OrderedStore::clear() noexcept {
    const std::vector<Entry> gone = std::move(entries_);
    entries_.clear();
    index_.clear();
    hashes_ = {};
    order_.reset();
    count_ = 0;
    emptyKeyEntry_ = none;
}

Ref<Enumerator> OrderedStore::enumerate() const {
    return make<StoreEnumerator>(Ref<const OrderedStore>(this));
}

OrderedStore::Selection OrderedStore::select(const Variant& index) const noexcept {
    switch (index.type()) {
    case VarType::String: {
        const String& key = index.text();
        const std::uint32_t entry = findKey(key, index_.exists() ? hashIgnoringCase(key) : 0);
        if (entry == none)
            return {Selection::Kind::Failure, invalidArgument};
        return {Selection::Kind::Entry, entry};
    }
    case VarType::Long:
        return selectPosition(index.number());
    case VarType::Integer:
    case VarType::Byte:
    case VarType::Boolean:
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Decimal:
        return selectPosition(roundHalfToEven(toDouble(index)));
    default:
        return {Selection::Kind::Failure, typeMismatch};
    }
}

OrderedStore::Selection OrderedStore::selectPosition(double position) const noexcept {
    if (position >= 1 && position <= count_)
        return {Selection::Kind::Position, static_cast<std::uint32_t>(position) - 1};
    return {Selection::Kind::Failure, outOfRange};
}

std::uint32_t OrderedStore::entryOf(Selection selection) const noexcept {
    if (order_ && selection.kind == Selection::Kind::Position)
        return order_->numberAt(order_->placeAt(selection.value));
    return selection.value;
}

PositionTree::Place OrderedStore::placeOf(Selection selection) const noexcept {
    return selection.kind == Selection::Kind::Position ? order_->placeAt(selection.value)
                                                       : order_->placeOf(selection.value);
}

OrderedStore::Target OrderedStore::targetOf(const Variant& before, const Variant& after) const noexcept {
    const bool behind = before.isMissing();
    if (behind && after.isMissing())
        return {0, true, false, {}};
    if (!behind && !after.isMissing())
        return {invalidArgument, false, false, {}};
    const Selection reference = select(behind ? after : before);
    if (reference.kind == Selection::Kind::Failure) {
        const auto failure = static_cast<std::int32_t>(reference.value);
        return {failure == outOfRange ? invalidArgument : failure, false, behind, reference};
    }
    const bool behindLast = behind && !order_ && reference.value + 1 == count_;
    return {0, behindLast, behind, reference};
}

std::uint32_t OrderedStore::findKey(std::u16string_view key, std::uint64_t hash) const noexcept {
    if (key.empty())
        return emptyKeyEntry_;
    const auto same = [&](std::uint32_t entry) {
        if (order_)
            order_->prefetch(entry);
        return equalIgnoringCase(entries_[entry].key, key);
    };
    if (!scans())
        return index_.find(hash, same);
    for (std::uint32_t entry = 0; entry < entries_.size(); ++entry)
        if (same(entry))
            return entry;
    return none;
}

// Makes room for one more entry. The index is begun when there are too many entries to search one by one and
// one of them has a key; until then, more entries than that mean that none has one.
void OrderedStore::reserveIndex(bool keyed) {
    if (index_.exists()) {
        index_.reserve(keyed);
        return;
    }
    if (entries_.size() < scanned || (entries_.size() > scanned && !keyed))
        return;
    const auto hasKey = [](const Entry& entry) { return !entry.key.empty(); };
    const auto keys = static_cast<std::uint32_t>(std::count_if(entries_.begin(), entries_.end(), hasKey));
    if (keys == 0 && !keyed)
        return;
    std::vector<std::uint32_t> hashes;
    hashes.reserve(entries_.capacity());
    index_.reserve(keys + keyed);
    for (std::uint32_t entry = 0; entry < entries_.size(); ++entry) {
        const std::uint64_t hash = hashIgnoringCase(entries_[entry].key);
        hashes.push_back(static_cast<std::uint32_t>(hash));
        if (hasKey(entries_[entry]))
            index_.insert(hash, entry);
    }
    hashes_ = std::move(hashes);
}

void OrderedStore::insertIntoOrder(const Target& target, std::uint32_t entry) {
    if (!order_)
        order_ = std::make_unique<PositionTree>(count_);
    PositionTree::Place place = target.atEnd ? order_->placeAt(count_) : placeOf(target.reference);
    if (target.behind)
        ++place.offset;
    order_->insert(place, entry);
}

// Lays the members out in their order and drops the entries of removed ones.
void OrderedStore::compact() {
    std::vector<Entry> entries;
    std::vector<std::uint32_t> hashes;
    entries.reserve(count_);
    hashes.reserve(index_.exists() ? count_ : 0);
    std::vector<std::uint32_t> numbers(entries_.size(), none);
    for (std::uint32_t position = 0; position < count_; ++position) {
        const std::uint32_t entry = entryOf({Selection::Kind::Position, position});
        numbers[entry] = position;
        entries.push_back(std::move(entries_[entry]));
        if (index_.exists())
            hashes.push_back(hashes_[entry]);
    }
    index_.renumber(numbers);
    if (emptyKeyEntry_ != none)
        emptyKeyEntry_ = numbers[emptyKeyEntry_];
    entries_ = std::move(entries);
    hashes_ = std::move(hashes);
    order_.reset();
}

} // namespace vlgs
