// SPDX-License-Identifier: MIT
// One property of all members of a collection, and whether they are still the same.
#include "automation/ClassInfo.h"
#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "capi/Boundary.h"
#include "ini/Collection.h"

#include <array>

using namespace vlgs;
using namespace vlgs::capi;

namespace {

/// Values on their way to the caller.
class Block {
  public:
    Block(vlgs_visit* visit, void* context) : visit_(visit), context_(context) {}

    void add(Variant value) {
        values_[count_++] = std::move(value);
        if (count_ == values_.size())
            pass();
    }
    void pass() {
        if (count_ == 0)
            return;
        const std::span passed(values_.data(), std::exchange(count_, 0));
        const int status = visit_(context_, reinterpret_cast<vlgs_value*>(passed.data()), passed.size());
        for (Variant& value : passed)
            value = Variant();
        if (status != VLGS_DONE)
            raiseKeptError();
    }

  private:
    vlgs_visit* visit_;
    void* context_;
    std::size_t count_ = 0;
    std::array<Variant, 64> values_;
};

/// A property of objects of any class; its number is looked up once for each class.
class PropertyReader {
  public:
    explicit PropertyReader(String name) : name_(std::move(name)) {}

    Variant read(const Variant& member) {
        if (!member.isObject() || !member.object())
            raise(RunTimeError::ObjectVariableNotSet);
        Object& object = *member.object();
        const ClassInfo* const cls = object.classInfo();
        if (!cls || cls != class_) {
            class_ = cls;
            number_ = object.idOf(name_);
        }
        return object.invoke(number_, InvokeKind::MethodOrGet, {});
    }

  private:
    String name_;
    const ClassInfo* class_ = nullptr;
    DispatchId number_ = unknownMember;
};

/// What `part` tells of each member, and for members that it does not know, the reader.
template <class Part>
void readByPosition(Collection& collection, Part part, PropertyReader& reader, Block& block) {
    for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(collection.Count()); ++i) {
        if (auto known = (collection.*part)(i))
            block.add(*std::move(known));
        else
            block.add(reader.read(collection.Item(Variant(static_cast<std::int32_t>(i + 1)))));
    }
}

void readEach(const Ref<Object>& object, const String& property, Block& block) {
    PropertyReader reader(property);
    if (auto* collection = dynamic_cast<Collection*>(object.get())) {
        if (equalIgnoringCase(property, u"Name"))
            return readByPosition(*collection, &Collection::nameAt, reader, block);
        if (equalIgnoringCase(property, u"Value"))
            return readByPosition(*collection, &Collection::valueAt, reader, block);
    }
    const Ref<Enumerator> members = enumerate(object);
    Variant member;
    while (members->next(member))
        block.add(reader.read(member));
}

} // namespace

int vlgs_read_each(vlgs_object* object, const char* property, vlgs_visit* visit, void* context) {
    return guarded([&] {
        Block block(visit, context);
        readEach(held(object), textOf(property), block);
        block.pass();
    });
}

int vlgs_changes(vlgs_object* object, uint64_t* changes) {
    return guarded([&] {
        const auto* collection = dynamic_cast<const Collection*>(held(object).get());
        *changes = collection ? collection->changes() : 0;
    });
}
