// SPDX-License-Identifier: MIT
#include "dde/DDE.h"

#include "frame/SharedState.h"
#include "library/Classes.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

TEST(DDE, CreationFailsForEveryCaller) {
    const Raised expected{
        10000, "VlGeneralServices.DDE.Class_Initialize",
        "The DDE object is not available at this time because it doesn't seem to be working correctly.\r\n"
        "I'll will re-enable this class as soon as I figure out what's wrong and fix the problem.\r\n"};
    EXPECT_EQ(raised([] { make<DDE>(); }), expected);
    EXPECT_EQ(raised([] { createObject(u"VlGeneralServices.DDE"); }), expected);
}

TEST(DDE, AFailedCreationCountsAnInstanceOut) {
    const auto& state = SharedState::ofThread();
    const auto before = state.instances;
    raised([] { make<DDE>(); });
    EXPECT_EQ(state.instances, before - 1);
    AddInstance();
}

} // namespace
} // namespace vlgs::test
