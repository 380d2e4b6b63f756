// SPDX-License-Identifier: MIT
#include "../platform/Scratch.h"
#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "files/Files.h"
#include "locking/CorvaTools.h"
#include "platform/FileHold.h"
#include "platform/Machine.h"
#include "support/Raised.h"

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace vlgs::test {
namespace {

constexpr const char16_t* documentId = u"{6d0c33a1-5b0b-4b52-9e0b-2c1f0c5a7eaf}";
constexpr const char16_t* otherId = u"{00000000-5b0b-4b52-9e0b-2c1f0c5a7eaf}";
constexpr auto fallback = eUserLock_FallbackToReadOnly;

enumUserLockTypes operator|(enumUserLockTypes type, enumUserLockTypes flag) {
    return enumUserLockTypes(std::int32_t{type} | std::int32_t{flag});
}

class TakingLocks : public ::testing::Test {
  protected:
    Ref<INIFile> project(enumUserLockTypes type, String* own = nullptr) {
        return tools->InitiateLock2(path, type, own, &granted);
    }
    Ref<INIFile> document(enumUserLockTypes type, const char16_t* id = documentId, String* own = nullptr) {
        return tools->InitiateDocLock(path, id, type, own, &granted);
    }
    /// The message code that taking a lock raises, 0 when it is granted.
    template <class Take>
    std::int32_t refusal(const Take& take) {
        const auto failure = raised(take);
        if (failure.number == 0)
            return 0;
        EXPECT_EQ(failure.source, "VlGeneralServices.modCorvaTools.g_InitiateLock");
        return failure.number - objectErrorBase;
    }
    /// The same at the same place, by somebody else.
    template <class Take>
    std::int32_t refusalMeanwhile(const Take& holding, const Take& wanted) {
        const auto held = holding();
        return refusal(wanted);
    }

    Scratch scratch;
    String path = scratch.path("project.VLS");
    Ref<CorvaTools> tools = make<CorvaTools>();
    enumUserLockTypes granted = fallback;
};

TEST_F(TakingLocks, ExcludeEachOtherAsTheirKindsSay) {
    constexpr auto rw = eUserLock_ReadWrite, ro = eUserLock_ReadOnly, ex = eUserLock_Exclusive;
    const struct {
        enumUserLockTypes held, wanted;
        std::int32_t onProject, onDocument;
    } cases[] = {
        {rw, rw, 0, 11556},     {rw, ro, 0, 0}, {rw, ex, 11515, 11556},
        {ro, rw, 0, 0},         {ro, ro, 0, 0}, {ro, ex, 0, 0},
        {ex, rw, 11516, 11556}, {ex, ro, 0, 0}, {ex, ex, 11515, 11556},
    };
    using Take = std::function<Ref<INIFile>()>;
    for (const auto& [held, wanted, onProject, onDocument] : cases) {
        SCOPED_TRACE(testing::Message() << held << " against " << wanted);
        const Take project1 = [&, kind = held] { return project(kind); };
        const Take project2 = [&, kind = wanted] { return project(kind); };
        const Take document1 = [&, kind = held] { return document(kind); };
        const Take document2 = [&, kind = wanted] { return document(kind); };
        const Take other2 = [&, kind = wanted] { return document(kind, otherId); };
        EXPECT_EQ(refusalMeanwhile(project1, project2), onProject);
        EXPECT_EQ(refusalMeanwhile(document1, document2), onDocument);
        EXPECT_EQ(refusalMeanwhile(document1, other2), 0);
        EXPECT_EQ(refusalMeanwhile(document1, project2), 0);
    }
    EXPECT_EQ(scratch.entries(), 0u) << "released locks leave no files";
}

TEST_F(TakingLocks, TellWhoHoldsThem) {
    auto lock =
        tools->InitiateLock3(path, eUserLock_Exclusive, nullptr, nullptr, u"Ann's \u65E5 session\r\nX=1");
    const std::string machine = machineName().toUtf8();
    EXPECT_EQ(scratch.read("exclusive.~sr"), "\r\n[User]\r\nAccess=Exclusive\r\nRequestedAccess="
                                             "Exclusive\r\nSessionID=Ann's ? session??X=1\r\nPath=" +
                                                 path.toUtf8() + "\r\nMachine=" + machine + "\r\n\r\n");
    EXPECT_EQ(lock->FullPath(), scratch.path("exclusive.~sr"));
    EXPECT_EQ(lock->FileType(), eINI_INI);
    EXPECT_TRUE(lock->Locked() && lock->DelayedDelete());

    const auto failure = raised([&] { project(eUserLock_ReadWrite); });
    for (const std::string& part : {machine, std::string("session Ann's ? session??X=1"),
                                    std::string("since "), std::string("access: Exclusive")})
        EXPECT_NE(failure.description.find(part), std::string::npos) << failure.description;
    lock = nullptr;

    // A file of somebody else's making tells what it tells.
    scratch.write("ex.~sr", "no document");
    const auto hold = FileHold::denyingWriters(scratch.path("ex.~sr"));
    const auto empty = raised([&] { project(eUserLock_ReadWrite); });
    EXPECT_NE(empty.description.find("Held by ? (session ?)"), std::string::npos) << empty.description;
    EXPECT_EQ(tools->FindExclusiveLock(path)->KeyValue(u"User", u"Machine"), u"");
}

TEST_F(TakingLocks, NameEveryHolderInTheUsersLanguage) {
    const auto first = tools->InitiateLock3(path, eUserLock_ReadWrite, nullptr, nullptr, u"one");
    const auto second = tools->InitiateLock3(path, eUserLock_ReadWrite, nullptr, nullptr, u"two");
    const auto description = raised([&] { project(eUserLock_Exclusive); }).description;
    EXPECT_NE(description.find("session one"), std::string::npos) << description;
    EXPECT_NE(description.find("session two"), std::string::npos) << description;
}

TEST_F(TakingLocks, ChangeWhatTheCallerHasAlready) {
    String own;
    auto lock = project(eUserLock_ReadWrite, &own);
    EXPECT_TRUE(own.view().starts_with(u"rw{") && own.view().ends_with(u"}.~sr")) << own.toUtf8();
    own = toUpper(own);
    auto wider = project(eUserLock_Exclusive, &own);
    EXPECT_EQ(own, u"exclusive.~sr");
    lock = nullptr;
    EXPECT_EQ(refusal([&] { project(eUserLock_ReadWrite); }), 11516);
    lock = project(eUserLock_ReadWrite, &own);
    wider = nullptr;
    EXPECT_EQ(refusal([&] { project(eUserLock_ReadWrite); }), 0);
    // A second read-write holder is in the way of the first one's upgrade.
    const auto second = project(eUserLock_ReadWrite);
    EXPECT_EQ(refusal([&] { project(eUserLock_Exclusive, &own); }), 11515);

    own = String();
    auto document1 = document(eUserLock_ReadWrite, documentId, &own);
    EXPECT_EQ(own, u"rw{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF}.~sd");
    const auto document2 = document(eUserLock_Exclusive, documentId, &own);
    document1 = nullptr;
    EXPECT_EQ(own, u"ex{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF}.~sd");
    EXPECT_TRUE(tools->IsDocLocked(path, documentId));
    // What the caller has is not taken a second time.
    EXPECT_EQ(refusal([&] { document(eUserLock_Exclusive, documentId, &own); }), 11556);
}

TEST_F(TakingLocks, FallBackToReadingWhereThatIsAllowed) {
    String own = u"none of mine";
    EXPECT_TRUE(project(eUserLock_ReadWrite | fallback));
    EXPECT_EQ(granted, eUserLock_ReadWrite);
    const auto exclusive = project(eUserLock_Exclusive | fallback);
    EXPECT_EQ(granted, eUserLock_Exclusive);
    const auto reader = project(eUserLock_ReadWrite | fallback, &own);
    EXPECT_EQ(granted, eUserLock_ReadOnly);
    EXPECT_TRUE(own.view().starts_with(u"ro{"));
    EXPECT_EQ(reader->KeyValue(u"User", u"Access"), u"ReadOnly");
    EXPECT_EQ(reader->KeyValue(u"User", u"RequestedAccess"), u"ReadWrite");
    EXPECT_TRUE(reader->Locked());
    const auto writer = document(eUserLock_ReadWrite);
    own = u"none of mine";
    EXPECT_FALSE(document(eUserLock_Exclusive | fallback, documentId, &own));
    EXPECT_EQ(granted, eUserLock_ReadOnly);
    EXPECT_EQ(own, u"none of mine");
}

TEST_F(TakingLocks, RefuseWhatIsNoLock) {
    for (const std::int32_t type : {3, 7, 8, -1, 1 << 30})
        EXPECT_EQ(refusal([&] { project(enumUserLockTypes(type)); }), 11524) << type;
    const auto missing = scratch.path("nowhere/project.VLS");
    for (const auto type : {eUserLock_ReadOnly, eUserLock_ReadWrite}) {
        const auto failure = raised([&] { tools->InitiateLock(missing, type); });
        EXPECT_EQ(failure.number - objectErrorBase, 11523);
        EXPECT_TRUE(failure.description.ends_with("\r\n" + missing.toUtf8())) << failure.description;
        EXPECT_EQ(refusal([&] { tools->InitiateDocLock(missing, documentId, type); }), 11523);
    }
    EXPECT_EQ(refusal([&] { tools->FindExclusiveLock(missing); }), 11523);
    for (const char16_t* id : {u"", u"..\\x", u"a/b", u"a.b", u"x:y"})
        EXPECT_EQ(refusal([&] { document(eUserLock_ReadWrite, id); }), 11523) << String(id).toUtf8();
    std::filesystem::create_directory(scratch.host("exclusive.~sr"));
    EXPECT_EQ(refusal([&] { project(eUserLock_Exclusive); }), 11523);
    EXPECT_EQ(scratch.entries(), 1u);
}

TEST_F(TakingLocks, ExclusiveOnesOfOthersAreFound) {
    scratch.write("exclusive.~sr", "[User]\r\nSessionID=stale");
    EXPECT_FALSE(tools->FindExclusiveLock(path));
    EXPECT_EQ(scratch.entries(), 0u) << "a stale file is deleted";
    const auto shared = project(eUserLock_ReadWrite);
    EXPECT_FALSE(tools->FindExclusiveLock(path));
    String own = shared->Filename();
    const auto exclusive = project(eUserLock_Exclusive, &own);
    const auto found = tools->FindExclusiveLock(path);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->FullPath(), exclusive->FullPath());
    EXPECT_EQ(found->KeyValue(u"User", u"SessionID"), exclusive->KeyValue(u"User", u"SessionID"));
    EXPECT_FALSE(found->Locked() || found->DelayedDelete());
    EXPECT_FALSE(tools->FindExclusiveLock(path, u"EXCLUSIVE.~SR"));
}

TEST_F(TakingLocks, StaleFilesOfBothKindsGoFirst) {
    for (const std::string name : {"rw{1}.~sr", "exclusive.~SR", "ro{2}.~sr", "rw{3}.~sd", "zz.~sd"})
        scratch.write(name, "x");
    scratch.write("project.VLS", "x");
    const auto lock = project(eUserLock_Exclusive);
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST_F(TakingLocks, ArePassedOnLateBound) {
    Variant arguments[] = {path, 2 + 4, u"", 0, u"my session"};
    const auto lock = callMember(tools, u"InitiateLock3", InvokeKind::Method, {arguments});
    EXPECT_EQ(arguments[2], Variant(u"exclusive.~sr"));
    EXPECT_EQ(toLong(arguments[3]), eUserLock_Exclusive);
    EXPECT_EQ(static_cast<INIFile&>(*lock.object()).KeyValue(u"User", u"SessionID"), u"my session");
}

// Whoever comes while others come and go gets his lock or a refusal, and never a part of both.
TEST_F(TakingLocks, OfManyAtOnceOneWins) {
    std::atomic<int> holders = 0, won = 0, together = 0;
    const auto work = [&] {
        const auto mine = make<CorvaTools>();
        for (int i = 0; i < 40; ++i) {
            try {
                const auto lock = mine->InitiateLock(path, eUserLock_Exclusive);
                together += ++holders > 1;
                ++won;
                --holders;
            } catch (const Error&) {
            }
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(together, 0);
    EXPECT_GE(won, 40);
    EXPECT_EQ(scratch.entries(), 0u);
}

} // namespace
} // namespace vlgs::test
