// SPDX-License-Identifier: MIT
#include "packager/ObjectPackager.h"

#include "automation/LateBound.h"
#include "automation/OutsideObject.h"
#include "platform/Memory.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstring>
#include <random>
#include <thread>

namespace vlgs {
namespace {

using Bytes = std::array<std::uint8_t, 16>;

Bytes bytesOf(const Variant& value) {
    Bytes bytes;
    std::memcpy(bytes.data(), static_cast<const void*>(&value), bytes.size());
    return bytes;
}

/// A Decimal with the given bytes 2 to 15.
Variant valueOf(const Bytes& bytes) {
    Decimal decimal{bytes[2], bytes[3], 0, 0};
    std::memcpy(&decimal.high, &bytes[4], 4);
    std::memcpy(&decimal.low, &bytes[8], 8);
    return decimal;
}

class Some final : public Object {
  public:
    const ClassInfo* classInfo() const noexcept override { return nullptr; }
};

TEST(ObjectPackager, AnObjectComesBack) {
    const auto packager = make<ObjectPackager>();
    const Ref<Object> object = make<Some>();
    std::int32_t number = 0;
    const Variant descriptor = packager->PackObject(object, &number);
    EXPECT_EQ(object->referenceCount(), 1);
    EXPECT_TRUE(packager->IsDescriptorFormat(descriptor));
    EXPECT_EQ(packager->RefCount(descriptor), 1);
    {
        const auto unpacked = packager->UnpackObject(descriptor);
        EXPECT_EQ(unpacked, object);
        EXPECT_EQ(packager->RefCount(descriptor), 2);
    }
    EXPECT_EQ(object->referenceCount(), 1);
    EXPECT_EQ(packager->PackObject(object), descriptor);
    EXPECT_EQ(make<ObjectPackager>()->UnpackObject(descriptor), object);
}

TEST(ObjectPackager, BytesAreLaidOutAsDescribed) {
    const auto packager = make<ObjectPackager>();
    const auto object = make<Some>();
    std::int32_t number = 0;
    const auto bytes = bytesOf(packager->PackObject(object, &number));
    Bytes expected{14, 0, 0, 0, 0, 0, 0, 0x2A};
    std::memcpy(&expected[8], &number, 4);
    std::memcpy(&expected[12], static_cast<const void*>(object.get()), 4);
    EXPECT_EQ(bytes, expected);
    EXPECT_GT(number, 0);
}

TEST(ObjectPackager, NoObjectGivesZero) {
    const auto packager = make<ObjectPackager>();
    std::int32_t number = 77;
    const Variant descriptor = packager->PackObject(nullptr, &number);
    EXPECT_EQ(number, 77);
    EXPECT_EQ(descriptor, Variant(Decimal{}));
    EXPECT_FALSE(packager->IsDescriptorFormat(descriptor));
    EXPECT_FALSE(packager->UnpackObject(descriptor));
    EXPECT_EQ(packager->RefCount(descriptor), 0);
}

TEST(ObjectPackager, OtherValuesGiveNothing) {
    const auto packager = make<ObjectPackager>();
    const auto object = make<Some>();
    const auto good = bytesOf(packager->PackObject(object));
    const auto changed = [&](std::size_t at, std::uint8_t byte) {
        auto bytes = good;
        bytes[at] = byte;
        return valueOf(bytes);
    };
    auto withoutNumber = good;
    std::fill_n(&withoutNumber[8], 4, std::uint8_t{0});
    struct Case {
        Variant value;
        bool hasForm;
    };
    const Case cases[] = {
        {Decimal{0, 0, 0, 42}, false},
        {u"*", false},
        {Variant(), false},
        {Variant(object), false},
        {changed(7, 0x2B), false},
        {changed(12, static_cast<std::uint8_t>(~good[12])), true},
        {changed(15, static_cast<std::uint8_t>(~good[15])), true},
        {changed(11, 0xFF), true}, // a negative number
        {changed(8, static_cast<std::uint8_t>(good[8] ^ 0x40)), true},
        {valueOf(withoutNumber), true},
    };
    for (const auto& [value, hasForm] : cases) {
        EXPECT_EQ(packager->IsDescriptorFormat(value), hasForm);
        EXPECT_FALSE(packager->UnpackObject(value));
        EXPECT_EQ(packager->RefCount(value), 0);
    }
}

TEST(ObjectPackager, AnObjectThatIsEndingGivesNothing) {
    class Unpacking final : public Object {
      public:
        explicit Unpacking(bool& found) : found_(found) {}
        ~Unpacking() override {
            const auto packager = make<ObjectPackager>();
            found_ = packager->UnpackObject(descriptor) || packager->RefCount(descriptor) != 0;
        }
        const ClassInfo* classInfo() const noexcept override { return nullptr; }
        Variant descriptor;

      private:
        bool& found_;
    };
    bool found = true;
    {
        const auto object = make<Unpacking>(found);
        object->descriptor = make<ObjectPackager>()->PackObject(object);
    }
    EXPECT_FALSE(found);
}

TEST(ObjectPackager, AnObjectThatHasEndedGivesNothing) {
    const auto packager = make<ObjectPackager>();
    std::vector<Variant> descriptors;
    for (int i = 0; i < 1000; ++i) { // mostly at the same address, and of the same class
        const auto object = make<Some>();
        descriptors.push_back(packager->PackObject(object));
        EXPECT_EQ(packager->UnpackObject(descriptors.back()), Ref<Object>(object));
    }
    const auto living = make<Some>();
    const Variant descriptor = packager->PackObject(living);
    for (const auto& ended : descriptors)
        if (sizeof(void*) > 4 || ended != descriptor) { // where addresses fit, one may be in use again
            EXPECT_FALSE(packager->UnpackObject(ended));
        }
    EXPECT_TRUE(packager->UnpackObject(descriptor));
}

TEST(ObjectPackager, AnotherThreadKnowsNothingOfIt) {
    const auto packager = make<ObjectPackager>();
    const auto object = make<Some>();
    const Variant descriptor = packager->PackObject(object);
    std::thread([&] {
        const auto other = make<ObjectPackager>();
        EXPECT_FALSE(other->UnpackObject(descriptor));
        const auto mine = make<Some>();
        EXPECT_EQ(other->UnpackObject(other->PackObject(mine)), Ref<Object>(mine));
    }).join();
    EXPECT_TRUE(packager->UnpackObject(descriptor));
}

/// A caller's object, and what stands for it as long as it is in use.
struct Callers {
    std::uint32_t signature = 0x12345678;
    std::int32_t references = 5;
};
class StandIn final : public OutsideObject {
  public:
    explicit StandIn(Callers* callers) : callers_(callers) {}
    const Access& access() const noexcept override {
        static constexpr Access access{
            [](const void* address) {
                return Ref<Object>(make<StandIn>(static_cast<Callers*>(const_cast<void*>(address))));
            },
            [](const void* address) { return static_cast<const Callers*>(address)->references; }};
        return access;
    }
    const void* address() const noexcept override { return callers_; }

  private:
    Callers* callers_;
};

TEST(ObjectPackager, ACallersObjectIsKnownByItsSignature) {
    const auto packager = make<ObjectPackager>();
    Callers callers;
    const Variant descriptor = packager->PackObject(make<StandIn>(&callers));
    EXPECT_EQ(packager->RefCount(descriptor), 5);
    const auto unpacked = packager->UnpackObject(descriptor);
    ASSERT_TRUE(unpacked);
    EXPECT_EQ(static_cast<OutsideObject&>(*unpacked).address(), &callers);
    callers.signature = 0x12345679;
    EXPECT_FALSE(packager->UnpackObject(descriptor));
    EXPECT_EQ(packager->RefCount(descriptor), 0);
}

TEST(ObjectPackager, MadeUpDescriptorsDoNoHarm) {
    const auto packager = make<ObjectPackager>();
    const auto object = make<Some>();
    Bytes bytes = bytesOf(packager->PackObject(object));
    std::mt19937 random(7);
    for (int i = 0; i < 100'000; ++i) {
        Bytes made = bytes;
        const auto from = i % 2 == 0 ? 8u : 12u;
        for (std::size_t at = from; at < 16; ++at)
            made[at] = static_cast<std::uint8_t>(random() % (i % 3 == 0 ? 3 : 256));
        const auto found = packager->UnpackObject(valueOf(made));
        EXPECT_TRUE(!found || found == Ref<Object>(object));
        packager->RefCount(valueOf(made));
    }
}

TEST(ObjectPackager, AnswersLateBoundCalls) {
    const Ref<Object> packager = make<ObjectPackager>();
    Variant arguments[] = {Variant(packager), std::int32_t{0}};
    const Variant descriptor = callMember(packager, u"PackObject", InvokeKind::Method, {arguments});
    EXPECT_GT(arguments[1].number(), 0);
    EXPECT_EQ(call(packager, u"UnpackObject", descriptor), Variant(packager));
    EXPECT_EQ(call(packager, u"IsDescriptorFormat", descriptor), Variant(true));
    EXPECT_EQ(call(packager, u"UnpackObject", u"*"), Variant(nullptr));
}

TEST(Memory, OnlyReadableBytesAreCopied) {
    std::vector<std::byte> from(100'000, std::byte{7});
    std::vector<std::byte> to(from.size());
    EXPECT_TRUE(readMemory(from.data(), to));
    EXPECT_EQ(from, to);
    EXPECT_FALSE(readMemory(nullptr, std::span(to).first(4)));
    EXPECT_FALSE(readMemory(reinterpret_cast<const void*>(0x10), std::span(to).first(4)));
    EXPECT_FALSE(readMemory(std::bit_cast<const void*>(~std::uintptr_t{8}), std::span(to).first(4)));
}

} // namespace
} // namespace vlgs
