// SPDX-License-Identifier: MIT
#include "packager/ObjectPackager.h"

#include "packager/PackedObjects.h"
#include "platform/Memory.h"

namespace vlgs {

namespace {

constexpr std::uint32_t marker = 0x2A; // byte 7, the highest of the Decimal's high word

struct Descriptor {
    std::int32_t number;
    std::uint32_t signature;
};

bool hasDescriptorForm(const Variant& value) noexcept {
    return value.is(VarType::Decimal) && value.decimal().high >> 24 == marker;
}

Variant asValue(const Descriptor& descriptor) noexcept {
    return Decimal{.scale = 0,
                   .sign = 0,
                   .high = marker << 24,
                   .low = std::uint64_t{descriptor.signature} << 32 |
                          static_cast<std::uint32_t>(descriptor.number)};
}

bool readDescriptor(const Variant& value, Descriptor& descriptor) noexcept {
    if (!hasDescriptorForm(value))
        return false;
    const auto low = value.decimal().low;
    descriptor = {static_cast<std::int32_t>(static_cast<std::uint32_t>(low)),
                  static_cast<std::uint32_t>(low >> 32)};
    return descriptor.number >= 1;
}

/// The first four bytes of an object; false where there is none any more.
bool readSignature(const PackedObjects::Entry& object, std::uint32_t& signature) noexcept {
    if (!object.own)
        return readMemory(object.address, std::as_writable_bytes(std::span(&signature, 1)));
    signature = object.signature;
    return object.own->referenceCount() > 0; // none while it ends, which may run a caller's code
}

/// The live object of a descriptor, or null.
const PackedObjects::Entry* findObject(const Variant& value) noexcept {
    Descriptor descriptor;
    std::uint32_t signature = 0;
    const auto* packed = PackedObjects::find();
    if (!packed || !readDescriptor(value, descriptor))
        return nullptr;
    const auto* object = packed->withNumber(descriptor.number);
    return object && readSignature(*object, signature) && signature == descriptor.signature ? object
                                                                                            : nullptr;
}

} // namespace

const ClassInfo& ObjectPackager::description() {
    return classInfoOf<ObjectPackager>();
}

Variant ObjectPackager::PackObject(const Ref<Object>& oObject, std::int32_t* lObjPtr) {
    if (!oObject)
        return Decimal{};
    auto& packed = PackedObjects::make();
    Descriptor descriptor{packed.add(*oObject), 0};
    readSignature(*packed.withNumber(descriptor.number), descriptor.signature);
    if (lObjPtr)
        *lObjPtr = descriptor.number;
    return asValue(descriptor);
}

Ref<Object> ObjectPackager::UnpackObject(const Variant& vDescriptor) const {
    const auto* object = findObject(vDescriptor);
    if (!object)
        return nullptr;
    return object->own ? Ref<Object>(object->own) : object->outside->reference(object->address);
}

bool ObjectPackager::IsDescriptorFormat(const Variant& vDescriptor) const noexcept {
    return hasDescriptorForm(vDescriptor);
}

std::int32_t ObjectPackager::RefCount(const Variant& vDescriptor) const {
    const auto* object = findObject(vDescriptor);
    if (!object)
        return 0;
    if (!object->own)
        return object->outside->count(object->address);
    const CallersView* view = callersView;
    return view ? view->count(*object->own) : object->own->referenceCount();
}

} // namespace vlgs
