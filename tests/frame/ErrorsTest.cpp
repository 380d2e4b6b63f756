// SPDX-License-Identifier: MIT
#include "frame/Errors.h"

#include "frame/Component.h"
#include "frame/ComponentFacts.h"
#include "support/Raised.h"
#include "support/Setting.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace vlgs::test {
namespace {

class ErrorsTest : public ::testing::Test {
  protected:
    const Setting language_{"LANGUAGE", "en"};
};

TEST_F(ErrorsTest, CarryNumberSourceAndTheCataloguesText) {
    const std::string text = "The name of a section cannot be empty.";
    EXPECT_EQ(raised([] { raiseMessage(u"A.B", eMsg_SectionNameCannotBeBlank); }),
              (Raised{-2147209996, "A.B", text}));
    EXPECT_EQ(raised([] { raiseMessage(u"A.B", eMsg_SectionNameCannotBeBlank, u"C:\\x"); }),
              (Raised{-2147209996, "A.B", text + "\r\nC:\\x"}));
}

TEST_F(ErrorsTest, NumbersLoseAndRegainTheBaseOnce) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    struct Case {
        std::int32_t given, code, number;
    };
    for (const auto& [given, code, number] :
         {Case{11508, 11508, -2147209996}, Case{-2147209996, 11508, -2147209996}, Case{99, 99, -2147221405},
          Case{-1, 2147221503, -1}, Case{lowest, -262144, lowest},
          // bit 18 in a positive number
          Case{0x40000, 0x40000, 6}, Case{0x7FFFFFFF, 0x7FFFFFFF, 6}}) {
        std::int32_t message = given;
        EXPECT_EQ(errorOf([&] { RaiseCatalogueError(u"S", message, u""); }), number) << given;
        EXPECT_EQ(message, code) << given;
    }
}

TEST_F(ErrorsTest, AnUnknownNumberIsDescribedByTheInvalidIndexText) {
    EXPECT_EQ(raised([] { raiseMessage(u"S", 99); }).description,
              "Error - Invalid resource message code.  Index is out of range. (99)");
}

TEST_F(ErrorsTest, HandlersRaiseAgainUnderTheirOwnSource) {
    EXPECT_EQ(raised([] { underSource(u"Mine", [] { raise(RunTimeError::PathNotFound); }); }),
              (Raised{76, "Mine", "Path not found"}));
    EXPECT_EQ(raised([] { underSource(u"Mine", [] { throw std::bad_alloc(); }); }),
              (Raised{7, "Mine", "Out of memory"}));
    EXPECT_EQ(underSource(u"Mine", [] { return 3; }), 3);
}

TEST_F(ErrorsTest, ASavedErrorIsRaisedOnce) {
    SaveError(Error(11, u"first", u"replaced"));
    try {
        throw Error(-42, u"source", u"description");
    } catch (const Error&) {
        SaveError();
    }
    SaveError(); // nothing is being handled: what is saved stays
    EXPECT_EQ(raised([] { RaiseSavedError(); }), (Raised{-42, "source", "description"}));
    EXPECT_EQ(raised([] { RaiseSavedError(); }), Raised{});
}

TEST_F(ErrorsTest, DescribeTextTakesNumbersFromTheCatalogue) {
    EXPECT_EQ(DescribeText(eMsg_SectionNameCannotBeBlank), u"The name of a section cannot be empty.");
    EXPECT_EQ(DescribeText(u"11508"), u"The name of a section cannot be empty.");
    EXPECT_EQ(DescribeText(u"VlGeneralServices.Files."), u"VlGeneralServices.Files");
    EXPECT_EQ(DescribeText(u"no full stop"), u"");
}

} // namespace
} // namespace vlgs::test
