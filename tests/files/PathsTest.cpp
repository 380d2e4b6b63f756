// SPDX-License-Identifier: MIT
#include "files/Files.h"
#include "platform/Files.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

// A drive "M:" that is mapped to a share, a share without a letter, and the usual "C:".
class Paths : public testing::Test {
  protected:
    Paths() : volumes_("VLGS_VOLUMES", "C:=/;M:=" + scratch_.folder() + "|\\\\srv\\data") {
        std::filesystem::create_directories(scratch_.host("Proj/Docs"));
        std::filesystem::create_directories(scratch_.host("Proj/Reqs"));
        scratch_.write("Proj/Docs/a.doc", "");
    }
    String at(const std::string& name) const { return scratch_.path(name); }

    Scratch scratch_;
    Setting volumes_;
    Ref<Files> files_ = make<Files>();
};

TEST_F(Paths, HaveOneOfThreeForms) {
    struct Case {
        String path;
        bool isUnc, isStandard, isRelative;
    };
    for (const auto& [path, isUnc, isStandard, isRelative] : {
             Case{u"", false, false, true},
             {u"  C:\\x", false, true, false},
             {u"z:", false, true, false},
             {u"1:\\x", false, false, true},
             {u"Ä:\\x", false, false, true},
             {u"  \\\\srv\\s", true, false, false},
             {u"\\\\", true, false, false},
             {u"\\x", false, false, true},
             {u"//srv/s", false, false, true},
             {u"..\\x", false, false, true},
         }) {
        bool told = !isUnc;
        EXPECT_EQ(files_->IsUNCPathFormat(path), isUnc) << path.toUtf8();
        EXPECT_EQ(files_->IsStandardPathFormat(path, &told), isStandard) << path.toUtf8();
        EXPECT_EQ(told, isUnc) << path.toUtf8();
        EXPECT_EQ(files_->IsRelativePathFormat(path), isRelative) << path.toUtf8();
    }
}

TEST_F(Paths, OnMappedDrivesHaveAUncForm) {
    struct Case {
        String path, completed, result;
    };
    for (auto [path, completed, result] : {
             Case{u"M:\\Proj\\a.vls", u"M:\\Proj\\a.vls", u"\\\\srv\\data\\Proj\\a.vls"},
             {u"m:", u"m:\\", u"\\\\srv\\data\\"},
             {u"C", u"C:\\", u"C:\\"},
             {u"C:", u"C:\\", u"C:\\"},
             {u"C:\\x", u"C:\\x", u"C:\\x"},
             {u"\\\\any\\thing", u"\\\\any\\thing", u"\\\\any\\thing"},
         }) {
        EXPECT_EQ(files_->TranslatePathToUNC(path), result);
        EXPECT_EQ(path, completed);
    }
    for (const auto& [path, code] : {std::pair{u"", 11529},
                                     {u"C:x", 11529},
                                     {u"C:/x", 11529},
                                     {u"CC", 11529},
                                     {u" C:\\", 11529},
                                     {u"Q:\\x", 11526},
                                     {u"1", 11526}}) {
        String given = path;
        EXPECT_TRUE(raises(messageError(code), "VlGeneralServices.modFiles.g_TranslatePathToUNC", "", [&] {
            files_->TranslatePathToUNC(given);
        })) << String(path).toUtf8();
    }
}

TEST_F(Paths, AreAbsoluteWhenTheyExist) {
    EXPECT_EQ(files_->Path(at("Proj")), at("Proj"));
    EXPECT_EQ(files_->Path(concat(at("Proj"), u"\\.\\Docs\\..\\Docs\\a.doc")), at("Proj/Docs/a.doc"));
    EXPECT_EQ(files_->Path(u"M:\\Proj\\Docs"), u"M:\\Proj\\Docs");
    for (const String& none : {at("none"), at("Proj/*"), at("Proj/Docs/?.doc"), String(), String(u"Q:\\x")}) {
        EXPECT_EQ(files_->Path(none), u"") << none.toUtf8();
        EXPECT_FALSE(files_->IsValidPath(none));
    }
    const String before = files_->CurPath();
    files_->SetCurPath(at("Proj"));
    EXPECT_EQ(files_->Path(u"Docs\\a.doc"), at("Proj/Docs/a.doc"));
    files_->SetCurPath(at("none"));
    EXPECT_EQ(files_->CurPath(), at("Proj"));
    files_->SetCurPath(before);
}

TEST_F(Paths, AreResolvedFromABaseThatNeedNotBeCurrent) {
    const String here = files_->CurPath();
    const auto resolved = [&](const String& relative, const String& base, bool unc, bool checked) {
        return checked ? files_->TranslateFromRelativePath(relative, base, unc)
                       : files_->TranslateFromRelativePathNoFileCheck(relative, base, unc);
    };
    struct Case {
        String relative, base;
        bool unc, checked;
        String result;
    };
    const Case cases[] = {
        {u"..\\Docs\\a.doc", at("Proj/Reqs"), false, true, at("Proj/Docs/a.doc")},
        {u"..\\DOCS\\.\\a.doc", u"M:\\Proj\\Reqs", true, true, u"\\\\srv\\data\\Proj\\DOCS\\a.doc"},
        {u"..\\Docs", u"M:\\Proj\\Reqs", false, true, u"M:\\Proj\\Docs"},
        {u"none.doc", at("Proj/Docs"), false, false, at("Proj/Docs/none.doc")},
        {u"", u"M:\\Proj", true, true, u"\\\\srv\\data\\Proj"},
        {u"", u"M:\\Proj", false, true, u"M:\\Proj"},
    };
    for (const auto& [relative, base, unc, checked, result] : cases)
        EXPECT_EQ(resolved(relative, base, unc, checked), result);
    EXPECT_EQ(files_->CurPath(), here);
    EXPECT_TRUE(files_->IsValidRelativePath(u"a.doc", at("Proj/Docs")));

    for (const auto& [relative, base, code] : {
             std::tuple<String, String, int>{u"none.doc", at("Proj"), 11544},
             {u"none\\x.doc", at("Proj"), 11544},
             {u"x", at("none"), 11532},
             {u"C:\\x", at("Proj"), 11545},
         }) {
        for (const bool checked : {true, false}) {
            if (!checked && relative == u"none.doc")
                continue;
            EXPECT_TRUE(raises(messageError(code), "VlGeneralServices.modFiles.g_TranslateFromRelativePath",
                               "",
                               [&, &path = relative, &from = base] { resolved(path, from, false, checked); }))
                << relative.toUtf8();
        }
    }
    EXPECT_EQ(errorOf([&] { files_->IsValidRelativePath(u"x", at("none")); }), messageError(11532));
}

TEST_F(Paths, AnAbsolutePathIsToldOfByItsForm) {
    const Setting language("VLGS_LOCALE", "en-US");
    for (const auto& [path, form] :
         {std::pair{u"\\\\srv\\data", "network (UNC)"}, {u"C:\\x", "standard (drive letter)"}})
        EXPECT_EQ(raised([&, &given = path] {
                      files_->TranslateFromRelativePath(given, u"C:\\", true);
                  }).description,
                  std::string("The path is not a relative path.\r\nThe path is in ") + form + " format.");
}

TEST_F(Paths, LeadFromABaseToAnother) {
    struct Case {
        String input, base, result;
    };
    const Case cases[] = {
        {at("Proj/Docs/a.doc"), at("Proj/Reqs"), u"..\\Docs\\a.doc"},
        {u"M:\\Proj\\new\\a.doc", u"\\\\srv\\data\\PROJ", u"new\\a.doc"},
        {u"M:\\Proj", u"\\\\SRV\\DATA\\proj", u""},
        {u"M:\\proj\\", u"M:\\Proj", u""},
        {u"M:\\", u"M:\\Proj\\Docs", u"..\\..\\"},
        {u"M:\\x", u"M:\\", u"..\\x"}, // a root counts as one level without a name
        {u"M:\\none\\a", u"M:\\Proj\\Docs", u"..\\..\\none\\a"},
    };
    for (const auto& [input, base, result] : cases)
        EXPECT_EQ(files_->TranslateToRelativePath(input, base), result) << input.toUtf8();
    EXPECT_EQ(files_->TranslateFromRelativePath(u"..\\Proj", u"M:\\", false), u"M:\\Proj");
    for (const auto& [input, base, code] :
         {std::tuple<String, String, int>{u"C:\\x", u"M:\\Proj", 11550}, {u"C:\\x", u"M:\\none", 11532}}) {
        EXPECT_TRUE(
            raises(messageError(code), "VlGeneralServices.modFiles.g_TranslateToRelativePath", "",
                   [&, &path = input, &from = base] { files_->TranslateToRelativePath(path, from); }));
    }
}

TEST_F(Paths, ConsistOfVolumeAndLevels) {
    struct Case {
        String path, volume, remainder;
    };
    for (const auto& [path, volume, remainder] : {
             Case{u"\\\\srv\\share\\dir\\f.txt", u"\\\\srv\\share\\", u"dir\\f.txt"},
             {u"\\\\srv\\share", u"\\\\srv\\share\\", u""},
             {u"\\\\srv", u"", u""},
             {u"C:\\", u"C:\\", u""},
             {u" C: \\ Data \\\\ x\\ ", u"C:\\", u"Data\\x"},
             {u" ..\\x ", u"", u"..\\x"},
             {u"\\Data\\x", u"", u"Data\\x"},
         }) {
        String told = u"?";
        EXPECT_EQ(files_->ExtractPathVolume(path, &told, true), volume) << path.toUtf8();
        EXPECT_EQ(told, remainder) << path.toUtf8();
    }
    EXPECT_EQ(errorOf([&] { files_->ExtractPathVolume(at("none"), nullptr, false); }), messageError(11549));
    EXPECT_TRUE(files_->IsSamePathVolume(at("Proj"), u"m:\\"));
    EXPECT_FALSE(files_->IsSamePathVolume(at("Proj"), u"C:\\"));
    EXPECT_EQ(errorOf([&] { files_->IsSamePathVolume(u"C:\\", at("none")); }), messageError(11549));

    const auto levels = [](std::vector<String> texts) { return Array::ofStrings(std::move(texts)); };
    EXPECT_EQ(files_->ExtractPathAllLevels(u" C:\\ Data \\ \\\\Proj "), levels({u"C:", u"Data", u"Proj"}));
    EXPECT_EQ(files_->ExtractPathAllLevels(u"\\\\\\"), levels({u""}));
    EXPECT_EQ(files_->ExtractPathDirLevels(u"\\\\srv\\s\\a\\b"), levels({u"a", u"b"}));
    EXPECT_EQ(files_->ExtractPathDirLevels(u"C:\\"), levels({u""}));
}

TEST_F(Paths, AreBuiltFromLevels) {
    struct Case {
        Array levels;
        std::int32_t start, stop;
        String path;
    };
    const auto texts = [](std::vector<Variant> values, std::int32_t lower = 0) {
        return Array::ofVariants(std::move(values), lower);
    };
    for (const auto& [levels, start, stop, path] : {
             Case{texts({u"a", u"", u"c"}), -1, -1, u"a\\c"},
             {texts({u"a", u"b", u""}), -1, -1, u"a\\b\\"},
             {texts({u"C:", u"Data"}), 0, 0, u"C:\\"},
             {texts({u"C:", u"Data", 7}, 3), 4, -1, u"Data\\7"},
             {texts({u"a", u"b"}), 1, 0, u""},
         })
        EXPECT_EQ(files_->BuildPath(levels, start, stop), path);
    EXPECT_EQ(files_->BuildPath(u"no array", -1, -1), u"");
    EXPECT_TRUE(raises(9, "VlGeneralServices.modFiles.g_BuildPath", "",
                       [&] { files_->BuildPath(texts({u"a"}), 0, 1); }));
    EXPECT_EQ(errorOf([&] { files_->BuildPath(texts({u"a"}), -2, -1); }), 9);
    EXPECT_EQ(files_->BuildDirBackupPrefix(2), u"..\\..\\");
    EXPECT_EQ(files_->BuildDirBackupPrefix(0), u"");
    EXPECT_EQ(files_->BuildDirBackupPrefix(-7), u"");
}

} // namespace
} // namespace vlgs::test
