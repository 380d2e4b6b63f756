// SPDX-License-Identifier: MIT
// The sections of a document as they were read, each with its keys. The Property of a section, and the
// Collection of its keys that the Property holds, are made when somebody asks for them; the keys then go
// into that Collection.
#pragma once

#include "automation/OrderedStore.h"
#include "ini/Collection.h"
#include "ini/FreshKeys.h"
#include "ini/Property.h"

#include <vector>

namespace vlgs {

class FreshSections final : public FreshNames {
  public:
    using FreshNames::FreshNames;

    /// The section of that name, made at the end when there was none.
    Place findOrAdd(StoredText name);

    /// The object of a section, the same at each asking.
    Property& object(Place section);
    /// That object if it was made, else null.
    Property* knownObject(Place section) const noexcept { return bodyOf(section).object.get(); }
    /// REQUIRES: there is no object of the section.
    const FreshKeys& keys(Place section) const noexcept { return bodyOf(section).keys; }
    FreshKeys& keys(Place section) noexcept { return bodies_[arena()->replacement(section)].keys; }

    /// Whether so many objects were made that a general store is worth making. It lets the arena go when the
    /// keys do.
    bool isWorn() const noexcept { return objectCount_ * std::uint64_t{4} > count(); }

    /// A store of the objects of all sections.
    Ref<OrderedStore> toStore();

  private:
    struct Body {
        FreshKeys keys; // empty once there is an object
        Ref<Property> object;
    };

    const Body& bodyOf(Place section) const noexcept { return bodies_[arena()->replacement(section)]; }

    std::vector<Body> bodies_;
    std::uint32_t objectCount_ = 0;
};

} // namespace vlgs
