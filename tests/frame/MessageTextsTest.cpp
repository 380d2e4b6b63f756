// SPDX-License-Identifier: MIT
#include "frame/MessageTexts.h"

#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

const std::string header = "0\tmin=1;MAX=2; Languages =3;Name=9\n1\t10\n2\t20\n3\ten;de\n";

TEST(MessageTexts, AreReadFromFilesBesideTheNamedOne) {
    Scratch scratch;
    scratch.write("Own.en.txt", "\xEF\xBB\xBF# first\r\n@12000\tOwn.de.txt\r\n@5\tlower.txt\r\n@x\r\n" +
                                    header +
                                    "10\ta\\nb\\tc\\s\r\n11\tonly \xC3\xA9nglish\n12 none\n\t\n13\t\\\\n\\");
    scratch.write("Own.de.txt", "10\tDeutsch");
    MessageTexts texts(scratch.path("Own.dll"));
    EXPECT_EQ(texts.minimum(), 10);
    EXPECT_EQ(texts.maximum(), u"20");
    EXPECT_EQ(texts.name(), u"");
    EXPECT_EQ(texts.text(10, u"en"), u"a\r\nb\tc ");
    EXPECT_EQ(texts.text(10, u"de"), u"Deutsch");
    EXPECT_EQ(texts.text(11, u"de"), u"only \u00E9nglish");
    EXPECT_EQ(texts.text(13, u"en"), u"\\n\\");
    EXPECT_EQ(errorOf([&] { texts.text(12, u"de"); }), 326);
    EXPECT_EQ(texts.text(21), u"Error - Invalid resource message code.  Index is out of range. (21)");
}

TEST(MessageTexts, AResourceFileThatIsNotThereIsAnError) {
    Scratch scratch;
    const auto missing = [](const auto& action, std::string_view file) {
        const auto failure = raised(action);
        EXPECT_EQ(failure.number, 53);
        EXPECT_TRUE(failure.description.ends_with(file)) << failure;
    };
    missing([&] { MessageTexts(scratch.path("Own.dll")); }, "\\Own.en.txt");
    scratch.write("Own.en.txt", "@12000\tOwn.de.txt\n" + header);
    MessageTexts texts(scratch.path("Own.dll"));
    missing([&] { texts.text(10, u"de"); }, "\\Own.de.txt");
}

} // namespace
} // namespace vlgs::test
