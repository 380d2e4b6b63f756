// SPDX-License-Identifier: MIT
// Files where tests/platform/FilesTest.cpp cannot run.
#include "platform/Files.h"

#include "platform/Scratch.h"
#include "platform/windows/Host.h"

#include <aclapi.h>

namespace vlgs {
namespace {

using test::errorOf;
using test::Scratch;

/// Whether a rule lets everybody read a file.
bool isPublic(const std::string& path) {
    ACL* rules = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoA(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &rules, nullptr, &descriptor) != ERROR_SUCCESS)
        throw std::runtime_error("no rules of " + path);
    bool found = false;
    for (DWORD i = 0; i < rules->AceCount; ++i) {
        void* rule = nullptr;
        GetAce(rules, i, &rule);
        auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(rule);
        if (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE && allowed->Mask & FILE_READ_DATA)
            found = found || IsWellKnownSid(&allowed->SidStart, WinWorldSid);
    }
    LocalFree(descriptor);
    return found;
}

TEST(WindowsFiles, AllNamesOfAFileGetTheNewContent) {
    const Scratch scratch;
    scratch.write("f", "a longer old content");
    ASSERT_TRUE(CreateHardLinkA(scratch.host("g").c_str(), scratch.host("f").c_str(), nullptr));
    replaceFile(scratch.path("f"), "new");
    EXPECT_EQ(scratch.read("g"), "new");
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST(WindowsFiles, SecretsAreForTheirUserAlone) {
    const Scratch scratch;
    createFile(scratch.path("open"), "x");
    createFile(scratch.path("created"), "x", Readable::ByUserOnly);
    copyFile(scratch.path("open"), scratch.path("copied"), Readable::ByUserOnly);
    ReplaceOptions options;
    options.readable = Readable::ByUserOnly;
    replaceFile(scratch.path("saved"), "x", options);
    replaceFile(scratch.path("saved"), "again");
    EXPECT_TRUE(isPublic(scratch.host("open")));
    for (const auto* name : {"created", "copied", "saved"})
        EXPECT_FALSE(isPublic(scratch.host(name))) << name;
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
