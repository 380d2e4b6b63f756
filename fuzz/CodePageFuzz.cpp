// SPDX-License-Identifier: MIT
// Any bytes in any code page: what is text there comes back as the same bytes, and what is encoded decodes.
// Covers: platform/CodePage.cpp platform/posix/CodePage*
#include "Input.h"
#include "platform/CodePage.h"

#include <cstdlib>
#include <iterator>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr unsigned pages[] = {437,  850,  852,   866,   874,   932,   936,   949,
                                         950,  1250, 1251,  1252,  1253,  1254,  1255,  1256,
                                         1257, 1258, 20866, 28591, 28592, 28595, 28605, 65001};
    fuzz::Input input(data, size);
    const auto page = CodePage::find(pages[input.below(std::size(pages))]);
    if (!page)
        std::abort();
    const auto bytes = input.rest();
    const auto text = page->decode(bytes);
    const auto exactly = page->encodeExactly(text);
    if (exactly && page->decode(*exactly) != text)
        std::abort();
    page->isText(bytes);
    page->encode(String::fromUtf8(bytes));
    for (const char unit : bytes.substr(0, 16))
        page->characterOf(page->codeOf(page->characterOf(static_cast<std::int16_t>(unit * 257))));
    return 0;
}
