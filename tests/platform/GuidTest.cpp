// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include "Scratch.h"

#include <set>

namespace vlgs::test {
namespace {

TEST(Guid, TextIsReadStrictly) {
    constexpr auto value = guid("01234567-89ab-CDEF-fedc-ba9876543210");
    EXPECT_EQ(guidText(value), u"{01234567-89AB-CDEF-FEDC-BA9876543210}");
    EXPECT_EQ(parseGuid(u"{01234567-89ab-cdef-FEDC-BA9876543210}"), value);
    for (const auto* text :
         {u"", u"01234567-89ab-cdef-FEDC-BA9876543210", u" {01234567-89ab-cdef-FEDC-BA9876543210",
          u"{01234567-89ab-cdef-FEDC-BA987654321 }", u"{01234567-89ab-cdef-FEDCBA-9876543210}",
          u"{01234567-89ab-cdef-FEDC-BA987654321G}", u"{01234567-89ab-cdef-FEDC-BA9876543210}}",
          u"{01234567-89ab-cdef-FEDC-BA987654321٣}", u"(01234567-89ab-cdef-FEDC-BA9876543210)"})
        EXPECT_FALSE(parseGuid(text)) << String(text).toUtf8();
}

TEST(Guid, IsNewInEveryProcess) {
    std::set<std::string> all;
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    for (int child = 0; child < 4; ++child)
        elsewhere([&] {
            for (int i = 0; i < 20; ++i)
                (void)!::write(ends[1], createGuid().bytes.data(), 16);
            return 0;
        });
    ::close(ends[1]);
    for (char bytes[16]; ::read(ends[0], bytes, 16) == 16;) {
        EXPECT_EQ(bytes[6] & 0xF0, 0x40);
        EXPECT_EQ(bytes[8] & 0xC0, 0x80);
        all.emplace(bytes, 16);
    }
    ::close(ends[0]);
    EXPECT_EQ(all.size(), 80u);
}

} // namespace
} // namespace vlgs::test
