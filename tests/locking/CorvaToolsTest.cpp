// SPDX-License-Identifier: MIT
#include "locking/CorvaTools.h"

#include "../platform/Scratch.h"
#include "library/Classes.h"
#include "platform/FileHold.h"
#include "support/Raised.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>

namespace vlgs::test {
namespace {

constexpr const char* guidText = "{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF}";
const std::string lockName = std::string("rw") + guidText + ".~sd";

class DocumentLocks : public ::testing::Test {
  protected:
    bool locked(const std::string& guid = guidText) const {
        return make<CorvaTools>()->IsDocLocked(scratch.path("project.VLS"), String::fromUtf8(guid));
    }
    bool exists(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(scratch.host(name)));
    }

    Scratch scratch;
};

TEST_F(DocumentLocks, StaleOnesAreDeletedAndLockNothing) {
    for (const auto& name : {lockName, std::string("ex{other}.~SD"), std::string(".~sd")})
        scratch.write(name, "x");
    for (const std::string name : {"project.VLS", "user.~sr", "rw.~sd.txt", "~sd"})
        scratch.write(name, "x");
    EXPECT_FALSE(locked());
    EXPECT_EQ(scratch.entries(), 4u);
}

TEST_F(DocumentLocks, HeldOnesLockTheirDocumentAlone) {
    scratch.write(lockName, "");
    const auto hold = FileHold::denyingWriters(scratch.path(lockName));
    EXPECT_TRUE(locked());
    EXPECT_TRUE(locked("{6d0c33a1-5b0b-4b52-9e0b-2c1f0c5a7eaf}"));
    EXPECT_FALSE(locked("{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EA0}"));
    EXPECT_FALSE(locked(""));
    EXPECT_TRUE(exists(lockName));
}

TEST_F(DocumentLocks, NamesTooShortForADocumentMatchNone) {
    scratch.write("rw.~sd", "");
    const auto hold = FileHold::denyingWriters(scratch.path("rw.~sd"));
    EXPECT_FALSE(locked());
    EXPECT_FALSE(locked("rw"));
}

TEST_F(DocumentLocks, AreHeldByProgramsThatKnowNothingOfThisLibrary) {
    scratch.write(lockName, "");
    const auto file = scratch.host(lockName);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 0, file.c_str(), O_RDONLY, 0);
    pid_t program = 0;
    const char* arguments[] = {"sleep", "60", nullptr};
    ASSERT_EQ(::posix_spawnp(&program, "sleep", &actions, nullptr, const_cast<char**>(arguments), environ),
              0);
    ::posix_spawn_file_actions_destroy(&actions);
    const bool seen = locked();
    const bool kept = exists(lockName);
    ::kill(program, SIGKILL);
    finish(program);
    EXPECT_TRUE(seen);
    EXPECT_TRUE(kept);
    EXPECT_FALSE(locked());
}

TEST_F(DocumentLocks, ArePlainFilesOfTheFolderItself) {
    scratch.write("target", "x");
    std::filesystem::create_directory(scratch.host("sub"));
    scratch.write("sub/" + lockName, "x");
    std::filesystem::create_symlink("target", scratch.host(lockName));
    std::filesystem::create_symlink("nowhere", scratch.host("ex1.~sd"));
    std::filesystem::create_directory(scratch.host("ex2.~sd"));
    std::filesystem::create_symlink("sub", scratch.host("ex3.~sd"));
    ASSERT_EQ(::mkfifo(scratch.host("ex4.~sd").c_str(), 0600), 0);
    // On hosts with "/" between folders a backslash is part of a name.
    scratch.write("..\\target.~sd", "x");
    scratch.write("target.~sd", "x");
    const auto before = scratch.entries();
    EXPECT_FALSE(locked());
    EXPECT_FALSE(locked("1"));
    EXPECT_EQ(scratch.entries(), before - 2);
    EXPECT_TRUE(exists("target"));
    EXPECT_TRUE(exists("sub/" + lockName));
}

TEST_F(DocumentLocks, ThatCannotBeDeletedStayAndCount) {
    scratch.write(lockName, "");
    ::chmod(scratch.host(lockName).c_str(), 0444);
    EXPECT_TRUE(locked());
    EXPECT_TRUE(exists(lockName));
}

TEST_F(DocumentLocks, AreLookedForBesideTheGivenPath) {
    std::filesystem::create_directory(scratch.host("sub"));
    scratch.write("sub/" + lockName, "");
    const auto hold = FileHold::denyingWriters(scratch.path("sub/" + lockName));
    const auto tools = make<CorvaTools>();
    const auto document = String::fromUtf8(guidText);
    const auto lockedBeside = [&](const String& path) { return tools->IsDocLocked(path, document); };
    EXPECT_TRUE(lockedBeside(scratch.path("sub/no such file")));
    EXPECT_FALSE(lockedBeside(scratch.path("sub")));
    EXPECT_FALSE(lockedBeside(scratch.path("sub/")));
    EXPECT_FALSE(lockedBeside(scratch.path("nowhere/project.VLS")));
    for (const char16_t* path : {u"", u" ", u"C:\\", u"C:", u"\\\\server\\share", u"Q:\\x\\y.VLS"})
        EXPECT_FALSE(lockedBeside(path)) << String(path).toUtf8();
    const auto before = currentFolder();
    ASSERT_TRUE(setCurrentFolder(scratch.path("sub")));
    EXPECT_TRUE(lockedBeside(u"project.VLS"));
    setCurrentFolder(before);
}

TEST(CorvaToolsHash, IsTheOneThatCallersStored) {
    const struct {
        const char* page;
        const char16_t* text;
        std::int32_t hash;
    } cases[] = {
        {"1252", u"", 0},
        {"1252", u"A", 65},
        {"1252", u"AB", 4091},
        {"1252", u"\u00FF", 255},
        {"1252", u"\u0416", 63}, // not on the page: "?"
        {"1251", u"\u0416", 0xC6},
        {"932", u"\u65E5", 0x93FA & 0x3FFF}, // negative as a signed code
        {"932", u"a\u65E5", (((0x93FA & 0x3FFF) * 61 + 97) & 0x3FFF)},
    };
    const auto tools = make<CorvaTools>();
    for (const auto& [page, text, hash] : cases) {
        const Setting setting("VLGS_CODEPAGE", page);
        String value = text;
        EXPECT_EQ(tools->Hash(value), hash) << value.toUtf8();
        EXPECT_EQ(value, text);
    }
}

TEST(CorvaToolsViewProperties, RaiseWhatTheReaderRaises) {
    const auto tools = make<CorvaTools>();
    EXPECT_EQ(tools->RetrieveViewProperties(u"A=/i1")->PropertyString(), u"A=/i1;");
    EXPECT_EQ(tools->RetrieveViewProperties(Variant())->Dictionary()->Count(), 0);
    EXPECT_TRUE(raises(messageError(11519), "VlGeneralServices.modViewProperties.g_BuildPropertyObject", "",
                       [&] { tools->RetrieveViewProperties(u"A"); }));
    EXPECT_EQ(errorOf([&] { tools->RetrieveViewProperties(null); }), 94);
}

} // namespace
} // namespace vlgs::test
