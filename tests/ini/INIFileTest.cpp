// SPDX-License-Identifier: MIT
#include "Document.h"
#include "automation/LateBound.h"
#include "frame/Errors.h"
#include "platform/Files.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

TEST(INIFile, FindsWhatItCreatedInAnyCase) {
    const auto document = make<INIFile>();
    const auto alpha = document->CreateSection(u"Alphä", missing, missing);
    EXPECT_EQ(document->CreateSection(u"ALPHÄ", missing, missing), alpha);
    EXPECT_EQ(alpha->Name(), u"Alphä");

    const auto key = document->CreateKey(u"New", u"k", u"1", missing, missing);
    EXPECT_EQ(document->CreateKey(u"new", u"K", u"2", missing, missing), key);
    EXPECT_EQ(document->KeyValue(u"NEW", u"k"), u"2");
    EXPECT_EQ(document->Key(2, 1), key);
    EXPECT_EQ(document->Key(2.0, u"K"), key);
    const auto other = document->CreateKey(1, u"x", u"y", missing, missing);
    EXPECT_EQ(document->Key(u"alphä", u"X"), other);
    EXPECT_EQ(stream(*document), "|[Alphä]|x=y||[New]|k=2||");
}

TEST(INIFile, AnswersEmptyForWhatIsNotThere) {
    const auto document = make<INIFile>();
    const auto probe = [&] {
        EXPECT_FALSE(document->Section(u"Missing"));
        EXPECT_FALSE(document->Section(0));
        EXPECT_FALSE(document->Section(null));
        EXPECT_FALSE(document->Key(u"Missing", u"k"));
        EXPECT_FALSE(document->Key(1, 9));
        EXPECT_EQ(document->KeyValue(u"Missing", u"k"), u"");
        EXPECT_EQ(document->KeyValue(u"S", u"Missing"), u"");
        EXPECT_EQ(document->KeyCount(u"Missing"), 0);
        EXPECT_FALSE(document->DeleteSection(u"Missing"));
        EXPECT_FALSE(document->DeleteKey(u"Missing", 1));
        EXPECT_FALSE(document->DeleteKey(u"S", 9));
    };
    probe();
    document->CreateKey(u"S", u"k", u"v", missing, missing);
    probe();
    document->Sections()->Add(u"a caller's text", u"Missing");
    document->SectionKeys(u"S")->Add(u"a caller's text", u"Missing");
    document->DeleteSection(1);
    EXPECT_FALSE(document->Section(u"Missing"));
    EXPECT_EQ(document->KeyValue(u"Missing", u"k"), u"");
}

TEST(INIFile, RefusesBlankNamesBeforeCreatingAnything) {
    const auto document = make<INIFile>();
    EXPECT_EQ(raised([&] { document->CreateSection(u"", missing, missing); }),
              (Raised{messageError(11508), "VlGeneralServices.INIFile.CreateSection",
                      raised([] { raiseMessage(u"", 11508); }).description}));
    EXPECT_EQ(raised([&] { document->CreateKey(u"S", u"", u"v", missing, missing); }),
              (Raised{messageError(11510), "VlGeneralServices.INIFile.CreateKey",
                      raised([] { raiseMessage(u"", 11510); }).description}));
    EXPECT_EQ(document->TotalKeyCount(), 0);
    EXPECT_EQ(document->Count(), 0);
}

TEST(INIFile, PlacesNewMembersBeforeAndAfterOthers) {
    const auto document = make<INIFile>();
    document->CreateSection(u"B", missing, missing);
    document->CreateSection(u"A", u"b", missing);
    document->CreateSection(u"C", missing, 2);
    document->CreateSection(u"A", missing, u"C"); // is there: stays where it is
    document->CreateKey(u"A", u"y", u"1", missing, missing);
    document->CreateKey(u"A", u"x", u"2", 1, missing);
    EXPECT_EQ(stream(*document), "|[A]|x=2|y=1||[B]||[C]||");

    for (const auto& [before, after, number] :
         {std::tuple<Variant, Variant, int>{u"none", missing, 5}, {1, 1, 5}, {9, missing, 5}}) {
        EXPECT_TRUE(raises(number, "", "", [&, &first = before, &second = after] {
            document->CreateSection(u"D", first, second);
        }));
        const auto key = document->CreateKey(u"B", u"lost", u"v", before, after);
        EXPECT_EQ(key->Value(), Variant(u"v"));
    }
    EXPECT_EQ(document->Count(), 3);
    EXPECT_EQ(document->KeyCount(u"B"), 0);

    document->Sections()->Add(u"a caller's text", u"D");
    EXPECT_EQ(errorOf([&] { document->CreateSection(u"D", missing, missing); }), 457);
}

TEST(INIFile, CountsAnUnsetCollectionOnlyWhereItMakesOne) {
    const auto document = make<INIFile>();
    EXPECT_EQ(errorOf([&] { document->Count(); }), 91);
    EXPECT_EQ(errorOf([&] { document->SectionCount(); }), 91);
    document->Sections();
    EXPECT_EQ(document->Count(), 0);
    document->CreateKey(u"A", u"1", u"", missing, missing);
    document->CreateKey(u"B", u"1", u"", missing, missing);
    document->CreateKey(u"B", u"2", u"", missing, missing);
    EXPECT_EQ(document->TotalKeyCount(), 3);
    EXPECT_EQ(document->KeyCount(u"b"), 2);
    EXPECT_TRUE(document->DeleteKey(u"B", u"1"));
    EXPECT_TRUE(document->DeleteSection(1));
    EXPECT_EQ(document->TotalKeyCount(), 1);
    document->Clear();
    EXPECT_EQ(document->KeyCount(1), 0);
    EXPECT_EQ(errorOf([&] { document->Count(); }), 91);
    EXPECT_EQ(document->TotalKeyCount(), 0);
    EXPECT_EQ(document->Count(), 0);
}

TEST(INIFile, KnowsItsPathAndKind) {
    struct Case {
        String path, directory, name, full;
    };
    for (const auto& [path, directory, name, full] : {
             Case{u"C:\\P\\demo.VLS", u"C:\\P", u"demo.VLS", u"C:\\P\\demo.VLS"},
             Case{u"C:\\demo.VLS", u"C:", u"demo.VLS", u"C:\\demo.VLS"},
             Case{u"\\demo.VLS", u"\\", u"demo.VLS", u"\\demo.VLS"},
             Case{u"\\\\s\\share\\x", u"\\\\s\\share", u"x", u"\\\\s\\share\\x"},
             Case{u"demo.VLS", u"", u"demo.VLS", u"demo.VLS"},
             Case{u"", u"", u"", u""},
         }) {
        const auto document = documentAt(path);
        EXPECT_EQ(document->FileDirectory(), directory);
        EXPECT_EQ(document->Filename(), name);
        EXPECT_EQ(document->FullPath(), full);
    }
    const auto document = make<INIFile>();
    for (const auto& [type, name] : {std::pair{0, u"Unknown"},
                                     {1, u"Corvane Project Information File (VLS)"},
                                     {2, u"Standard INI File"},
                                     {3, u"Corvane Database Link File (VLL)"},
                                     {4, u"Unknown"}}) {
        document->SetFileType(static_cast<enumINIFileTypes>(type));
        EXPECT_EQ(document->FileTypeName(), name);
    }
}

TEST(INIFile, CloneSharesTheContentAndNotTheLock) {
    const Scratch scratch;
    scratch.write("a.vls", "");
    const auto document = documentAt(scratch.path("a.vls"));
    document->SetFileType(eINI_VLS);
    document->SetDelayedDelete(true);
    document->CreateSection(u"S", missing, missing);
    document->SetLocked(true);
    ASSERT_TRUE(document->Locked());
    const auto clone = document->Clone(scratch.path("b.vls"));
    EXPECT_FALSE(clone->Locked());
    EXPECT_TRUE(clone->DelayedDelete());
    EXPECT_EQ(clone->FileType(), eINI_VLS);
    EXPECT_EQ(clone->Filename(), u"b.vls");
    clone->CreateKey(u"S", u"k", u"v", missing, missing);
    EXPECT_EQ(document->KeyValue(u"S", u"k"), u"v");
    clone->Clear();
    EXPECT_EQ(document->Count(), 1);
    EXPECT_EQ(errorOf([] { make<INIFile>()->Clone(u"x")->Count(); }), 91);
}

TEST(INIFile, LockKeepsWritersOfOtherDocumentsOut) {
    const Scratch scratch;
    scratch.write("a.ini", "[S]\nk=old\n");
    const auto owner = documentAt(scratch.path("a.ini"));
    const auto other = documentAt(scratch.path("a.ini"));
    owner->SetLocked(true);
    ASSERT_TRUE(owner->Locked());
    EXPECT_EQ(errorOf([&] { other->Save(u""); }), messageError(11512));
    EXPECT_FALSE(other->Delete());
    EXPECT_EQ(scratch.read("a.ini"), "[S]\nk=old\n");

    owner->CreateKey(u"S", u"k", u"new", missing, missing);
    EXPECT_TRUE(owner->Save(u"")); // its own lock is no obstacle
    EXPECT_TRUE(owner->Locked());
    EXPECT_EQ(errorOf([&] { other->Save(u""); }), messageError(11512));
    EXPECT_EQ(scratch.read("a.ini"), "\r\n[S]\r\nk=new\r\n\r\n");

    owner->SetLocked(false);
    EXPECT_TRUE(other->Save(u""));
    const auto missingFile = documentAt(scratch.path("none.ini"));
    missingFile->SetLocked(true);
    EXPECT_FALSE(missingFile->Locked());
}

TEST(INIFile, ASecondLockLeavesTheFirstToTheEndOfTheProcess) {
    const Scratch scratch;
    scratch.write("a.ini", "");
    EXPECT_EQ(1, elsewhere([&] {
                  const auto document = documentAt(scratch.path("a.ini"));
                  document->SetLocked(true);
                  document->SetLocked(true);
                  document->SetLocked(false);
                  return !document->Locked() && !document->Delete();
              }));
    EXPECT_TRUE(documentAt(scratch.path("a.ini"))->Delete());
}

TEST(INIFile, DelayedDeletionHappensAsTheDocumentEnds) {
    const Scratch scratch;
    for (const bool locked : {false, true}) {
        scratch.write("a.ini", "");
        auto document = documentAt(scratch.path("a.ini"));
        document->SetDelayedDelete(true);
        document->SetLocked(locked);
        EXPECT_EQ(scratch.entries(), 1u);
        document = nullptr;
        EXPECT_EQ(scratch.entries(), 0u);
    }
    EXPECT_FALSE(documentAt(scratch.path("a.ini"))->Delete());
}

TEST(INIFile, WorksLateBound) {
    const Ref<Object> document = make<INIFile>();
    call(document, u"CREATEKEY", u"S", u"k", u"v");
    EXPECT_EQ(call(document, u"KeyValue", u"s", u"K"), Variant(u"v"));
    EXPECT_EQ(call(document, u"KeyValue", null, u"K"), Variant(u"")) << "look-ups never raise";
    EXPECT_EQ(call(document, u"DeleteKey", null, 1), Variant(false));
    EXPECT_EQ(call(call(document, u"key", u"S", 1).reference(), u"Value"), Variant(u"v"));
    // Arguments of a value go to the collection that it holds; a text takes none.
    const Variant key = call(call(document, u"Section", u"S").reference(), u"Value", u"K");
    EXPECT_EQ(key, call(document, u"key", u"S", u"k"));
    EXPECT_EQ(errorOf([&] { call(key.reference(), u"Value", 1); }), 450);
    EXPECT_EQ(call(document, u"GetStream"), Variant(u"[S]k=v"));
    EXPECT_TRUE(call(document, u"GetStream2").isEmpty());
    call(document, u"PutStream2", u"[T]");
    EXPECT_EQ(call(document->invoke(defaultMember, InvokeKind::PropertyGet, {}).reference(), u"Count"),
              Variant(2));
}

} // namespace
} // namespace vlgs::test
