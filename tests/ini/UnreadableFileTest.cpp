// SPDX-License-Identifier: MIT
#include "Document.h"
#include "platform/OtherProcess.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace vlgs::test {
namespace {

TEST(INIText, OfAFileThatCannotBeReadIsRefused) {
    const Scratch scratch;
    ::mkfifo(scratch.host("endless").c_str(), 0600);
    const int pipe = ::open(scratch.host("endless").c_str(), O_RDWR); // else it has no writer for an instant
    const auto writer = start([&] {
        const std::string piece(1u << 16, 'x');
        while (::write(pipe, piece.data(), piece.size()) > 0)
            ;
        return 0;
    });
    const std::pair<String, const char*> cases[] = {{scratch.path("none.ini"), "File not found"},
                                                    {u"/dev/zero", "Permission denied"},
                                                    {scratch.path("endless"), "Out of memory"}};
    for (const auto& [path, cause] : cases) {
        const auto error = raised([&file = path] { documentFrom(file); });
        EXPECT_EQ(error.number, messageError(11513));
        EXPECT_EQ(error.source, "VlGeneralServices.modFiles.g_RetrieveINIFile");
        EXPECT_NE(error.description.find(cause), std::string::npos) << error.description;
    }
    ::kill(writer, SIGKILL);
    finish(writer);
    ::close(pipe);
}

} // namespace
} // namespace vlgs::test
