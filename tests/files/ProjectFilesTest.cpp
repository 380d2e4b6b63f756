// SPDX-License-Identifier: MIT
#include "base/Text.h"
#include "files/ConnectionString.h"
#include "files/Files.h"
#include "platform/FileHold.h"
#include "platform/Files.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

TEST(ProjectFile, IsFoundFromWhatAUserTyped) {
    const Scratch scratch;
    scratch.write("proj.VLS", "");
    scratch.write("other.txt", "");
    const auto files = make<Files>();
    const auto at = [&](const char* name) { return scratch.path(name); };
    struct Case {
        String typed, found;
    };
    for (const auto& [typed, found] : {
             Case{concat(u"  ", at("proj"), u"  "), at("proj.VLS")},
             {at("proj.VLS"), at("proj.VLS")},
             {at("PROJ.vls"), at("PROJ.vls")},
             {at("proj.mdb"), at("proj.VLS")},
             {at("other.txt"), at("other.txt")},
             {at("none.txt"), at("none.txt")},
         })
        EXPECT_EQ(files->CheckVLSFilePath(typed, false), found);
    for (const auto& missingFile : {String(u"  "), at("none"), at("none.vls"), at("none/x"), at("")}) {
        EXPECT_EQ(raised([&] { files->CheckVLSFilePath(missingFile, false); }),
                  (Raised{messageError(11502), "VlGeneralServices.modFiles.g_CheckVLSFilePath",
                          "Unable to locate file for Corva project.  Login failed."}));
        EXPECT_EQ(files->CheckVLSFilePath(concat(u" ", missingFile), true), String(trim(missingFile)));
    }
}

TEST(ProjectFile, NewDocumentsGetTheExtensionOfTheirType) {
    const auto files = make<Files>();
    for (const auto& [path, type, result] : {std::tuple{u"C:\\p\\a.txt", eINI_VLS, u"C:\\p\\a.VLS"},
                                             {u"C:\\p.q\\a", eINI_VLL, u"C:\\p.q\\a.VLL"},
                                             {u"C:\\p\\a.b.vls", eINI_VLS, u"C:\\p\\a.b.vls"},
                                             {u"C:\\p\\a.txt", eINI_INI, u"C:\\p\\a.txt"},
                                             {u"C:\\p\\a", enumINIFileTypes(9), u"C:\\p\\a"}}) {
        const auto document = files->CreateINIFile(path, type);
        EXPECT_EQ(document->FullPath(), result);
        EXPECT_EQ(document->FileType(), type);
    }
    EXPECT_EQ(files->GetVLLFileFullNameForVLS(u"C:\\p.q\\a.VLS"), u"C:\\p.q\\a.VLL");
    EXPECT_EQ(files->GetVLLFileFullNameForVLS(u"C:\\p.q\\a"), u"C:\\p.q\\a.VLL");
}

TEST(ProjectFile, IsReadWithPathAndType) {
    const Scratch scratch;
    scratch.write("a.VLS", "[PROJECT]\nGUID=1\n");
    scratch.write("a.VLL", "[ODBC]\nDSN=x\n");
    scratch.write("bad.VLL", "[ODBC]\n=x\n");
    const auto files = make<Files>();
    const auto project = files->RetrieveVLSFile(scratch.path("a"));
    EXPECT_EQ(project->FullPath(), scratch.path("a.VLS"));
    EXPECT_EQ(project->FileType(), eINI_VLS);
    EXPECT_EQ(project->KeyValue(u"project", u"guid"), u"1");
    EXPECT_EQ(files->RetrieveVLLFileForVLS(scratch.path("a.VLS"))->FileType(), eINI_VLL);
    EXPECT_EQ(files->RetrieveINIFile(concat(u" ", scratch.path("a.VLL"), u" "))->FileType(), eINI_INI);
    EXPECT_FALSE(files->RetrieveVLLFileForVLS(scratch.path("bad.VLS")));
    EXPECT_FALSE(files->RetrieveVLLFileForVLS(scratch.path("none.VLS")));
    EXPECT_TRUE(files->Is40VLSFile(scratch.path("bad.VLL")));
    EXPECT_FALSE(files->Is40VLSFile(scratch.path("none")));

    EXPECT_TRUE(raises(messageError(11503), "VlGeneralServices.modFiles.g_RetrieveINIFile",
                       "\r\n" + scratch.path("none.txt").toUtf8(),
                       [&] { files->RetrieveVLSFile(scratch.path("none.txt")); }));
    EXPECT_EQ(errorOf([&] { files->RetrieveVLSFile(scratch.path("none")); }), messageError(11502));
    EXPECT_EQ(errorOf([&] { files->RetrieveINIFile(scratch.path("none")); }), messageError(11513));
    EXPECT_EQ(errorOf([&] { files->RetrieveVLLFile(scratch.path("bad.VLL")); }), messageError(11513));
}

class SystemDatabase : public testing::Test {
  protected:
    SystemDatabase() : temp_("TEMP", home_.folder()) {}

    Scratch scratch_;
    Scratch home_;
    Setting temp_;
    Ref<Files> files_ = make<Files>();
};

TEST_F(SystemDatabase, StaysInAShortWritableFolder) {
    scratch_.write("sys.mdw", "db");
    scratch_.write("VLTEMP.TXT", "a user's own");
    EXPECT_EQ(files_->AdjustSystemDBPath(scratch_.path("sys.mdw")), scratch_.path("sys.mdw"));
    EXPECT_EQ(scratch_.read("VLTEMP.TXT"), "a user's own");
    EXPECT_EQ(scratch_.entries(), 2u);
    EXPECT_EQ(home_.entries(), 0u);
}

TEST_F(SystemDatabase, IsCopiedFromALongOrReadOnlyPlace) {
    const std::size_t scratchLength = scratch_.path("").length() - 1; // the folder without its last backslash
    const std::string exact(65 - scratchLength - 1, 'f');
    std::filesystem::create_directories(scratch_.host(exact));
    std::filesystem::create_directories(scratch_.host(exact + "f"));
    scratch_.write(exact + "/sys.mdw", "65");
    scratch_.write(exact + "f/sys.mdw", "66");
    EXPECT_EQ(files_->AdjustSystemDBPath(scratch_.path(exact + "/sys.mdw")),
              scratch_.path(exact + "/sys.mdw"));
    EXPECT_EQ(files_->AdjustSystemDBPath(scratch_.path(exact + "f/sys.mdw")), home_.path("sys.mdw"));
    EXPECT_EQ(home_.read("sys.mdw"), "66");

    // A host's own path is as long as it is written, although its form with a drive letter is longer.
    const std::string hostExact(65 - scratch_.folder().size() - 1, 'h');
    std::filesystem::create_directories(scratch_.host(hostExact));
    scratch_.write(hostExact + "/sys.mdw", "");
    const String hostPath = String::fromUtf8(scratch_.host(hostExact + "/sys.mdw"));
    EXPECT_EQ(files_->AdjustSystemDBPath(hostPath), hostPath);

    scratch_.write("sys.mdw", "read-only");
    setAttributes(scratch_.path("sys.mdw"), FileAttributes::ReadOnly);
    const String second = files_->AdjustSystemDBPath(scratch_.path("sys.mdw"));
    EXPECT_FALSE(has(attributes(second), FileAttributes::ReadOnly));
    EXPECT_EQ(readFile(second), "read-only"); // under another name: the first copy is still somebody's
    EXPECT_EQ(home_.read("sys.mdw"), "66");

    EXPECT_TRUE(raises(53, "VlGeneralServices.modFiles.g_AdjustSystemDBPath", "",
                       [&] { files_->AdjustSystemDBPath(scratch_.path("none.mdw")); }));
}

TEST(ReadWriteFile, IsTheFileItselfOrACopyOfItsOwn) {
    const Scratch scratch;
    const Scratch temporary;
    const Setting setting("TMPDIR", temporary.folder());
    const Setting onWindows("TMP", temporary.folder());
    const std::string content(3'000'001, 'd'); // more than is copied at once
    const auto files = make<Files>();
    scratch.write("a.mdw", content);
    const String path = scratch.path("a.mdw");
    bool usedTemporary = true;
    EXPECT_EQ(files->GetReadWriteFile(path, usedTemporary), path);
    EXPECT_FALSE(usedTemporary);
    EXPECT_FALSE(files->IsDirectoryReadOnly());

    const auto copyOf = [&] {
        const String copy = files->GetReadWriteFile(path, usedTemporary);
        EXPECT_TRUE(usedTemporary);
        EXPECT_TRUE(files->IsDirectoryReadOnly());
        EXPECT_TRUE(readFile(copy) == content);
        EXPECT_FALSE(has(attributes(copy), FileAttributes::ReadOnly));
        const std::string name = copy.toUtf8().substr(temporary.path("").length());
        EXPECT_TRUE(name.starts_with("Vl{") && name.ends_with("}.mdw")) << name;
        EXPECT_EQ(name.size(), 2u + 38u + 4u);
#ifndef _WIN32 // which tells rights in another way
        EXPECT_EQ(std::filesystem::status(temporary.host(name)).permissions() & std::filesystem::perms(0077),
                  std::filesystem::perms::none);
#endif
    };
    {
        const auto hold = FileHold::denyingWriters(path);
        copyOf();
    }
    EXPECT_EQ(temporary.entries(), 1u);
#ifndef _WIN32 // Wine lets the administrator write to such a file
    setAttributes(path, FileAttributes::ReadOnly);
    copyOf();
    EXPECT_EQ(temporary.entries(), 2u);
#endif
    const auto entries = temporary.entries();
    EXPECT_EQ(files->GetReadWriteFile(scratch.path("none"), usedTemporary), u"");
    EXPECT_FALSE(usedTemporary);
    EXPECT_EQ(temporary.entries(), entries);
}

// ---- Connection strings ----

Ref<INIFile> projectOf(std::u16string_view text, enumINIFileTypes type = eINI_VLS) {
    auto document = make<INIFile>();
    document->SetFullPath(u"C:\\P\\demo.VLS");
    document->SetFileType(type);
    document->PutStream2(String(text), eStream_String, u"|", false);
    return document;
}

std::string connection(const INIFile& document, const ConnectionRequest& request = {}) {
    std::string text = g_BuildConnectionString(&document, request).toUtf8();
    const auto at = text.find("PWD=");
    if (request.user.empty() && at != text.npos) { // what the default password is does not matter
        EXPECT_EQ(text.find(';', at) - at, 34u);
        text.replace(at + 4, 30, "*");
    }
    return text;
}

TEST(ConnectionString, IsMadeOfTheFilesPairsAccountAndIdentity) {
    struct Case {
        std::u16string_view document;
        ConnectionRequest request;
        std::string text;
    };
    const Case cases[] = {
        {u"[ODBC]|DRIVER=Microsoft Access Driver (*.mdb)|[PROJECT]|GUID={1}|Key=7",
         {},
         "DRIVER=Microsoft Access Driver (*.mdb);DBQ=C:\\P\\demo.MDB;UID=corvane admin;PWD=*;ENCRYPTED=True;"
         "VLGUID={1};VLPROJKEY=7;SEQKEY=0;"},
        {u"[odbc]|driver={microsoft access driver (*.MDB)}|dbq=C:\\x.mdb",
         {u"tok", u"me", u"pw", false, -5},
         "driver={microsoft access driver (*.MDB)};dbq=C:\\x.mdb;UID=me;PWD=pw;ENCRYPTED=False;"
         "SCHEMATOKEN=tok;SEQKEY=-5;"},
        {u"[ODBC]|DSN=x|[DATABASE ACCOUNT]|uid=a|PWD=b",
         {u"", u"me", u"pw", true, 0},
         "DSN=x;uid=a;PWD=b;ENCRYPTED=False;SEQKEY=0;"},
        {u"[ODBC]|DSN=x|stripTRAILINGzero=1|GUESStheColDef=1|[PROJECT]|GUID=",
         {u"", u"me", u"pw", true, 0},
         "DSN=x;UID=me;PWD=pw;ENCRYPTED=True;SEQKEY=0;"},
        {u"[ODBC]|trusted_connection=Yes|[DATABASE ACCOUNT]|A=1", {}, "trusted_connection=Yes;A=1;SEQKEY=0;"},
        {u"[ODBC]|Trusted_Connection=yes",
         {},
         "Trusted_Connection=yes;UID=corvane admin;PWD=*;ENCRYPTED=True;SEQKEY=0;"},
        {u"[ODBC]", {u"", u"me", u"", false, 2147483647}, "UID=me;PWD=;ENCRYPTED=False;SEQKEY=2147483647;"},
    };
    for (const auto& [document, request, text] : cases)
        EXPECT_EQ(connection(*projectOf(document), request), text);
}

TEST(ConnectionString, WantsAProjectOrLinkDocumentWithAnOdbcSection) {
    EXPECT_EQ(g_BuildConnectionString(nullptr, {}), u"");
    for (const auto type : {eINI_Empty, eINI_INI})
        EXPECT_TRUE(raises(messageError(11504), "g_BuildConnectionString", "",
                           [&] { connection(*projectOf(u"[ODBC]", type)); }));
    const auto empty = make<INIFile>();
    empty->SetFileType(eINI_VLL);
    for (const auto& document : {projectOf(u"[PROJECT]|GUID=1"), empty})
        EXPECT_TRUE(raises(messageError(11558), "VlGeneralServices.modFiles.g_ValidateODBCSectionExists", "",
                           [&] { connection(*document); }));
}

TEST(ConnectionString, IsBuiltFromAFileByItsExtension) {
    const Scratch scratch;
    scratch.write("a.VLS", "[ODBC]\r\nDSN=project\r\nUID=u\r\n");
    scratch.write("a.vll", "[ODBC]\r\nDSN=link\r\nUID=u\r\n");
    scratch.write("a.txt", "");
    scratch.write("lone.txt", "[ODBC]\r\nDSN=lone\r\nUID=u\r\n");
    const auto of = [&](const char* name) {
        return g_BuildConnectionStringFromPath(scratch.path(name), {}).toUtf8();
    };
    const std::string end = ";UID=u;ENCRYPTED=False;SEQKEY=0;";
    EXPECT_EQ(of("a.VLS"), "DSN=project" + end);
    EXPECT_EQ(of("a.vll"), "DSN=link" + end);
    EXPECT_EQ(of("a.txt"), "DSN=project" + end); // the project file of that name stands for it
    EXPECT_EQ(of("lone.txt"), "DSN=lone" + end);
    EXPECT_EQ(of("none.VLS"), "");
    EXPECT_EQ(of(""), "");
}

} // namespace
} // namespace vlgs::test
