// SPDX-License-Identifier: MIT
// Files where tests/platform/FilesTest.cpp cannot run.
#include "platform/Files.h"

#include "platform/Scratch.h"
#include "platform/windows/Host.h"

namespace vlgs {
namespace {

using test::errorOf;
using test::Scratch;

TEST(WindowsFiles, AllNamesOfAFileGetTheNewContent) {
    const Scratch scratch;
    scratch.write("f", "a longer old content");
    ASSERT_TRUE(CreateHardLinkA(scratch.host("g").c_str(), scratch.host("f").c_str(), nullptr));
    replaceFile(scratch.path("f"), "new");
    EXPECT_EQ(scratch.read("g"), "new");
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST(WindowsFiles, DevicesWithoutAnEndAreNotRead) {
    EXPECT_EQ(readFile(u"NUL"), "");
    if (fileExists(u"Z:\\dev\\zero")) { // Wine's
        EXPECT_EQ(errorOf([] { readFile(u"Z:\\dev\\zero"); }), 70);
        EXPECT_EQ(errorOf([] { FileReader(u"Z:\\dev\\zero"); }), 70);
    }
}

} // namespace
} // namespace vlgs
