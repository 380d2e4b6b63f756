// SPDX-License-Identifier: MIT
// The committed interface definition and manifest are the ones that the class descriptions give.
// scripts/update_idl.sh runs these tests with VLGS_UPDATE_TYPELIB set, and then they write the files.
#include "library/Idl.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vlgs {
namespace {

void compare(const char* name, const std::string& wanted) {
    const char* root = std::getenv("VLGS_SOURCE_DIR");
    if (!root)
        GTEST_SKIP() << "VLGS_SOURCE_DIR does not name the source tree";
    const std::string path = std::string(root) + "/typelib/" + name;
    if (std::getenv("VLGS_UPDATE_TYPELIB"))
        std::ofstream(path, std::ios::binary) << wanted;
    std::ostringstream found;
    found << std::ifstream(path, std::ios::binary).rdbuf();
    EXPECT_TRUE(found.str() == wanted)
        << path << " is stale: run scripts/update_idl.sh and commit the result";
}

TEST(InterfaceDefinition, IsTheCommittedOne) {
    compare("VlGeneralServices.idl", interfaceDefinition());
}

TEST(InterfaceDefinition, ManifestIsTheCommittedOne) {
    compare("VlGeneralServices.manifest", sideBySideManifest());
}

} // namespace
} // namespace vlgs
