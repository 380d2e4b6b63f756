// SPDX-License-Identifier: MIT
// The keys of a section as they were read. A Property is made of a record when somebody asks for one; from
// then on the Property is the key and the record keeps only its name.
//
// Keys can be given other texts. Whoever wants to change more than that, or has asked for many objects, makes
// a general store of them.
#pragma once

#include "automation/OrderedStore.h"
#include "ini/FreshNames.h"
#include "ini/Property.h"

#include <vector>

namespace vlgs {

class FreshKeys final : public FreshNames {
  public:
    using FreshNames::FreshNames;

    /// The object of a key, the same at each asking.
    Property& object(Place key);
    /// That object if it was made, else null.
    const Property* knownObject(Place key) const noexcept {
        return arena()->isReplaced(key) ? objects_[arena()->replacement(key)].get() : nullptr;
    }
    /// REQUIRES: there is no object of the key.
    StoredText value(Place key) const noexcept { return arena()->value(key); }

    /// Gives the key of that name that text, adding it when there is none. The place of a key that was there,
    /// else `none`.
    Place set(StoredText name, StoredText value);

    /// Whether so many objects were made that a general store takes no more memory, and no more time to make
    /// than the objects took.
    bool isWorn() const noexcept { return objects_.size() * 4 > count(); }

    /// A store of the objects of all keys.
    Ref<OrderedStore> toStore() const;

  private:
    Ref<Property> makeObject(Place key) const;

    std::vector<Ref<Property>> objects_;
};

} // namespace vlgs
