// SPDX-License-Identifier: MIT
// Hands the test bed to the Python tests.
#include "capi/vlgs.h"
#include "support/TestBed.h"

extern "C" [[gnu::visibility("default")]] vlgs_object* vlgs_test_bed() {
    return reinterpret_cast<vlgs_object*>(vlgs::make<vlgs::test::TestBed>().detach());
}
