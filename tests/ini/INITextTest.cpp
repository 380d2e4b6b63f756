// SPDX-License-Identifier: MIT
#include "Document.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

String joined(std::initializer_list<const char16_t*> lines) {
    String text;
    for (const auto* line : lines)
        text = text.empty() ? String(line) : concat(text, u"\r\n", String(line));
    return text;
}

TEST(INIText, IsParsedLineByLine) {
    struct Case {
        String text;
        std::string document;
    };
    const Case cases[] = {
        {joined({u"[A]", u"x = 1 ", u"junk", u"y=a=b"}), "|[A]|x= 1 |y=a=b||"},
        {joined({u"k=v", u"[A]"}), "|[A]||"},
        {joined({u"[A]", u"[a]", u"k=1", u"K=2"}), "|[A]|k=2||"},
        {joined({u"  [ Sec ] trailing"}), "|[Sec]||"},
        {joined({u"[A]", u"a=[b]", u"[B", u"]C[", u"][D]", u"; note=x", u"\tt\t=\t"}),
         "|[A]|a=[b]||[D]|; note=x|\tt\t=\t||"},
        {joined({u"x=[A]", u"k=1", u"[B]", u"[A]", u"j=2"}), "|[A]|k=1|j=2||[B]||"},
        {joined({u"[[A]]", u"]=1"}), "|[[A]|]=1||"},
        {joined({u"[A]", u"k=", u"", u"  "}), "|[A]|k=||"},
        {String(), "|"},
    };
    for (const auto& [text, expected] : cases) {
        const auto document = make<INIFile>();
        document->PutStream(text);
        EXPECT_EQ(stream(*document), expected);
    }
}

TEST(INIText, ReadsIntoWhatTheDocumentHolds) {
    const auto document = make<INIFile>();
    document->PutStream(u"[A]\r\nk=1");
    document->PutStream2(Array::ofStrings({u"x=lost", u"[B]", u"b=2xb=3", u"[a]", u"K=4"}), eStream_String,
                         u"X", true);
    EXPECT_EQ(stream(*document), "|[A]|k=4||[B]|b=3||"); // split at the delimiter in any case
}

TEST(INIText, StopsAtANamelessKeyOrSection) {
    for (const auto* line : {u"=x", u"  =x", u"[]", u"[ ]"}) {
        const auto document = documentAt(u"C:\\p\\a.ini");
        const auto putStream = [&] { document->PutStream(joined({u"[A]", u"k=1", line, u"l=2"})); };
        EXPECT_TRUE(
            raises(messageError(11513), "VlGeneralServices.modFiles.g_RetrieveINIFile", "", putStream));
        EXPECT_NE(raised(putStream).description.find("\r\nC:\\p\\a.ini\r\n"), std::string::npos);
        EXPECT_EQ(stream(*document), "|[A]|k=1||");
    }
}

TEST(INIText, IsStreamedInEveryForm) {
    const auto document = make<INIFile>();
    EXPECT_EQ(document->GetStream(true), Variant(u"\r\n"));
    EXPECT_EQ(document->GetStream(false), Variant(u""));
    document->PutStream(u"[A]\r\nx=1");
    const auto lines = document->GetStream2(eStream_StringArray, u"\r\n");
    EXPECT_EQ(lines, Variant(Array::ofStrings({u"", u"[A]", u"x=1", u"", u""})));
    EXPECT_EQ(document->GetStream2(_eStream_ByteArray, u"").array().size(), 12u);
    EXPECT_TRUE(document->GetStream2(enumStreamTypes(0), u"").isEmpty());
    document->PutStream(u"[B]\r\ny=2");
    EXPECT_EQ(document->GetStream(false), Variant(u"[A]x=1[B]y=2"));

    document->Sections()->Add(u"a caller's text", u"C");
    EXPECT_TRUE(raises(messageError(11517), "VlGeneralServices.modFiles.g_GetStreamFromINI", "",
                       [&] { document->GetStream(true); }));
}

TEST(INIText, IsReadInTheCodePageOrAsItsMarkSays) {
    struct Case {
        const char* page;
        std::string content;
        std::string document;
    };
    using namespace std::string_literals;
    const Case cases[] = {
        {"1252", "[\xC4]\r\nk=\x80", "|[Ä]|k=€||"},
        {"1252", "[A]\nk=1\r\r\nl\r=2\n\nm=3", "|[A]|k=1\r|l\r=2|m=3||"},
        {"1252", "[A]\nn=a\0b\n"s, "|[A]|n=a\0b||"s},
        {"932", "[\x83\x5B]\nk=\x83\x5D\n", "|[ゼ]|k=ゾ||"}, // trail bytes that look like brackets
        {"1252", "\xEF\xBB\xBF[\xC3\x84]\nk=\xE2\x82\xAC", "|[Ä]|k=€||"},
        {"1252", "\xFF\xFE[\0\xC4\0]\0\n\0k\0=\0\xAC\x20\r\0\n\0"s, "|[Ä]|k=€||"},
        {"1252", "\xFE\xFF\0[\0\xC4\0]\0\n\0k\0=\x20\xAC\0"s, "|[Ä]|k=€||"},
        {"1252", "\xFF\xFE", "|"},
        {"1252", "", "|"},
    };
    const Scratch scratch;
    for (const auto& [page, content, expected] : cases) {
        const Setting setting("VLGS_CODEPAGE", page);
        if (std::to_string(CodePage::system().number()) != page)
            continue; // Windows keeps to its own
        scratch.write("a.ini", content);
        EXPECT_EQ(stream(*documentFrom(scratch.path("a.ini"))), expected);
    }
}

TEST(INIText, LinesMayCrossEveryChunk) {
    const Scratch scratch;
    const std::string value(3'000'000, 'v');
    for (const std::size_t shift : {0u, 1u, 2u}) {
        std::string text(65530 + shift, '#');
        text.append("\r\n[A]\r\nk=").append(value).append("\r\nl=2\r\n");
        scratch.write("a.ini", text);
        const auto document = documentFrom(scratch.path("a.ini"));
        EXPECT_EQ(document->KeyValue(u"A", u"k").toUtf8(), value);
        EXPECT_EQ(document->KeyValue(u"A", u"l"), u"2");
    }
}

TEST(INIText, SavedIsWhatIsRead) {
    const Scratch scratch;
    const Setting setting("VLGS_CODEPAGE", "1252");
    const auto document = documentAt(scratch.path("a.ini"));
    document->PutStream(u"[Ä]\r\nx= 1 \r\ny=€\r\n[B]\r\nz=3");
    EXPECT_TRUE(document->Save(u""));
    EXPECT_EQ(scratch.read("a.ini"), "\r\n[\xC4]\r\nx= 1 \r\ny=\x80\r\n\r\n[B]\r\nz=3\r\n\r\n");
    EXPECT_TRUE(document->Save(scratch.path("b.ini")));
    EXPECT_EQ(document->Filename(), u"b.ini");
    document->Clear();
    EXPECT_TRUE(document->Save(u""));
    EXPECT_EQ(scratch.read("b.ini"), "\r\n");
    EXPECT_EQ(stream(*documentFrom(scratch.path("a.ini"))), "|[Ä]|x= 1 |y=€||[B]|z=3||");
}

TEST(INIText, ADocumentThatIsBoundByAHostsOwnPathHasUsefulParts) {
    const auto document = documentAt(u"/srv/projects/demo.VLS");
    EXPECT_EQ(document->Filename(), u"demo.VLS");
    EXPECT_EQ(document->FileDirectory(), u"C:\\srv\\projects");
    EXPECT_EQ(document->FullPath(), u"C:\\srv\\projects\\demo.VLS");
}

TEST(INIText, AFailedSaveTouchesNothing) {
    const Scratch scratch;
    const Setting setting("VLGS_CODEPAGE", "1252");
    scratch.write("a.ini", "old");
    scratch.write("readonly.ini", "old");
    setAttributes(scratch.path("readonly.ini"), FileAttributes::ReadOnly);
    const auto document = documentAt(scratch.path("a.ini"));
    const auto refused = [&](const String& path) {
        document->SetLocked(true);
        const auto error = raised([&] { document->Save(path); });
        EXPECT_EQ(error.number, messageError(11512));
        EXPECT_EQ(error.source, "VlGeneralServices.modFiles.g_SaveINIFile");
        EXPECT_NE(error.description.find("\r\n"), std::string::npos);
        EXPECT_FALSE(document->Locked());
        EXPECT_EQ(document->Filename(), u"a.ini");
    };
    refused(scratch.path("readonly.ini"));
    refused(scratch.path("none/a.ini"));
    refused(scratch.path(""));
    document->CreateKey(u"S", u"k", u"日", missing, missing); // not in the code page
    refused(u"");
    EXPECT_EQ(scratch.read("a.ini"), "old");
    document->Clear();
    for (const auto& [section, key, value, told] :
         {std::tuple(u"S", u"k", u"é😀",
                     "The value of key \"k\" in section \"S\" has the character \"😀\" "
                     "(U+1F600), which code page 1252 does not hold"),
          std::tuple(u"S", u"kЖ", u"",
                     "The name of key \"kЖ\" in section \"S\" has the character \"Ж\" (U+0416)"),
          std::tuple(u"日", u"k", u"", "The name of section \"日\" has the character \"日\" (U+65E5)")}) {
        document->Clear();
        document->CreateKey(section, key, value);
        const auto error = raised([&] { document->Save(u""); });
        EXPECT_NE(error.description.find(told), std::string::npos) << error.description;
    }
    EXPECT_EQ(scratch.read("readonly.ini"), "old");
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST(INIText, BytesThatAreNoTextAreNeverSavedOver) {
    struct Case {
        const char* page;
        std::string content;
        const char* reason; // null: everything is text
    };
    const Case cases[] = {
        {"65001", "[A]\nk=\xEF\xBF\xBD\nl=\xC3\xA9", nullptr},
        {"65001", "[A]\nk=1\nl=\xE9x\nm=\xFF",
         "Line 3 of the file has bytes that are no characters in code page 65001"},
        {"932", "[A]\nk=\x93\xFA\xB1\xA0", nullptr},
        {"932", "[A\x85\x40]\n", "Line 1 of the file"},
        {"932", "[A]\nk=\x93", "code page 932"},
        {"1252", "[A]\nk=\x81\xFF", nullptr},
        {"65001", "\xEF\xBB\xBF[A]\nk=\xE9", "Line 2 of the file"},
        {"1252", std::string("\xFF\xFE[\0A\0]\0k", 9), "Line 1 of the file ends in half"},
    };
    const Scratch scratch;
    for (const auto& [page, content, reason] : cases) {
        const Setting setting("VLGS_CODEPAGE", page);
        if (std::to_string(CodePage::system().number()) != page)
            continue; // Windows keeps to its own
        scratch.write("a.ini", content);
        const auto document = documentFrom(scratch.path("a.ini"));
        const auto clone = document->Clone(scratch.path("./A.INI"));
        for (const auto& each : {document, clone}) {
            const auto error = raised([&] { each->Save(u""); });
            EXPECT_EQ(error.number, reason ? messageError(11512) : 0) << content;
            if (reason) {
                EXPECT_NE(error.description.find(reason), std::string::npos) << error.description;
                EXPECT_EQ(scratch.read("a.ini"), content);
            }
        }
        EXPECT_TRUE(document->Save(scratch.path("b.ini")));
        EXPECT_TRUE(document->Save(u""));
        document->Clear();
        EXPECT_TRUE(document->Save(scratch.path("a.ini")));
    }
}

TEST(INIText, AHiddenFileStaysHiddenAndNothingElse) {
    const Scratch scratch;
    for (const auto others : {FileAttributes::Normal, FileAttributes::ReadOnly | FileAttributes::Archive}) {
        scratch.write("a.ini", "old");
        const String path = scratch.path("a.ini");
        setAttributes(path, FileAttributes::Hidden | others);
        if (!has(attributes(path), FileAttributes::Hidden))
            GTEST_SKIP() << "the file system keeps no such attributes";
        EXPECT_TRUE(documentAt(path)->Save(u""));
        // Windows marks every file that was written for the archive.
        EXPECT_EQ(attributes(path) | FileAttributes::Archive,
                  FileAttributes::Hidden | FileAttributes::Archive);
        EXPECT_EQ(scratch.read("a.ini"), "\r\n");
        deleteFile(path);
    }
}

// Each of these would take minutes, and more time than a test is given, if anything were done again for every
// line, chunk or character.
TEST(INIText, HostileInputIsReadInLinearTime) {
    std::string manySections, sameName, brackets(4'000'000, '[');
    for (int i = 0; i < 200'000; ++i) {
        manySections += "[s" + std::to_string(i) + "]\n";
        sameName += "[S]\nk=" + std::to_string(i) + "\n";
    }
    const Scratch scratch;
    for (const std::string& content :
         {manySections, sameName, brackets, std::string(8'000'000, '\n'), std::string(4'000'000, '\0'),
          "[A]\n" + std::string(4'000'000, ' ') + "k=1"}) {
        scratch.write("a.ini", content);
        documentFrom(scratch.path("a.ini"));
    }
}

} // namespace
} // namespace vlgs::test
