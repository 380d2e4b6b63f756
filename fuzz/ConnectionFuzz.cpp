// SPDX-License-Identifier: MIT
// Connection strings of project files with any content.
// Covers: files/ConnectionString.cpp
#include "Input.h"
#include "automation/Variant.h"
#include "files/ConnectionString.h"
#include "files/ProjectFiles.h"
#include "ini/INIFile.h"

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto keepsMessages = make<INIFile>();
    fuzz::Input input(data, size);
    ConnectionRequest request;
    request.isEncrypted = input.below(2) != 0;
    request.sequenceKey = static_cast<std::int32_t>(input.below(256)) - 2;
    request.schemaToken = input.text();
    request.user = input.text();
    request.password = input.text();
    fuzz::succeeds([&] {
        const auto document = g_CreateINIFile(u"C:\\nowhere\\a.VLS", eINI_VLS);
        document->PutStream(String::fromUtf8(input.rest()));
        g_BuildConnectionString(document.get(), request);
    });
    return 0;
}
