// SPDX-License-Identifier: MIT
// References to objects packed into plain values.
#pragma once

#include "frame/Component.h"

namespace vlgs {

/// A descriptor is a Decimal whose 16 bytes are: 0 to 1 the type, 14; 2 to 6 zero; 7 the marker 0x2A; 8 to 11
/// the object's number, little-endian; 12 to 15 the signature, the first four bytes of the object. The number
/// is the object's address, or, where that does not fit into a positive 32-bit number, one that stands for it
/// on this thread.
///
/// A descriptor counts as no reference. It is of use on the thread that made it; there, a descriptor of an
/// object of this library that has ended gives nothing. Of a caller's object only the signature is compared,
/// so the caller must know that it lives. No value raises, and none disturbs the process.
class VLGS_API ObjectPackager final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// The descriptor of an object, whose number `lObjPtr` receives. Without an object the Decimal 0, and
    /// `lObjPtr` stays.
    Variant PackObject(const Ref<Object>& oObject, std::int32_t* lObjPtr = nullptr);

    /// The object of a descriptor, or none.
    Ref<Object> UnpackObject(const Variant& vDescriptor) const;

    /// Whether a value is a Decimal with the marker; the object is not looked for.
    bool IsDescriptorFormat(const Variant& vDescriptor) const noexcept;

    /// The references to the object of a descriptor, 0 where `UnpackObject` gives none.
    std::int32_t RefCount(const Variant& vDescriptor) const;
};

constexpr auto ObjectPackager::describe() {
    return describeClass<ObjectPackager>(
        {.name = "ObjectPackager",
         .help = "References to objects packed into plain values",
         .number = eInterfaceID_ObjectPackager,
         .classId = guid("2104d23b-fd0d-484e-a3ec-ec792e4e80ed"),
         .interfaceId = guid("e5e13b0c-b32a-4bfa-ab19-8b517b5b6a03"),
         .creatable = true},
        identity(),
        method<&ObjectPackager::PackObject>(1, "PackObject",
                                            "Returns a descriptor of an object that holds no reference to it",
                                            parameter("oObject", "the object; the Decimal 0 for none"),
                                            optional("lObjPtr", "receives the object's number")),
        method<&ObjectPackager::UnpackObject>(
            2, "UnpackObject", "Returns the object of a descriptor",
            parameter("vDescriptor", "a value that PackObject returned, or any other")),
        get<&ObjectPackager::IsDescriptorFormat>(
            3, "IsDescriptorFormat", "Whether a value has the form of a descriptor",
            parameter("vDescriptor", "a value that PackObject returned, or any other")),
        get<&ObjectPackager::RefCount>(
            4, "RefCount", "The number of references to the object of a descriptor",
            parameter("vDescriptor", "a value that PackObject returned, or any other")));
}

} // namespace vlgs
