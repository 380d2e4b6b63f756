// SPDX-License-Identifier: MIT
// Turning a page of 10 MB into text, against the program html2text over the same page in a file, and against
// copying the page. Speeds count the page's bytes in UTF-8.
#include "general/HtmlText.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vlgs {
namespace {

constexpr std::size_t length = 10'000'000;

/// Paragraphs, lists, tables, links and entities as in a long requirements document.
const std::string& page() {
    static const std::string text = [] {
        std::string html = "<html><head><title>T</title><style>p { color: red }</style></head><body>\r\n";
        for (unsigned i = 0; html.size() < length; ++i) {
            const std::string n = std::to_string(i);
            html += "<h2 class=\"section\">Requirement " + n + "</h2>\r\n<p>The system <b>shall</b> answer " +
                    "within " + n + "&nbsp;ms when  the user asks &quot;why&quot; &amp; waits, as told in " +
                    "<a href=\"doc" + n + ".htm\">document " + n + "</a>.</p>\r\n<ul>\r\n" +
                    "  <li>It keeps the record of each change and shows it on demand.\r\n" +
                    "  <li>It loses nothing when the power fails. <img src=\"p" + n +
                    ".gif\" alt=\"x\">\r\n" +
                    "</ul>\r\n<table><tr><td>Owner<td>QA</tr><tr><td>Priority<td>high</tr></table><br>\r\n";
        }
        return html + "</body></html>";
    }();
    return text;
}

void htmlToText(benchmark::State& state) {
    const String html = String::fromUtf8(page());
    for (auto _ : state)
        benchmark::DoNotOptimize(g_HTMLtoText(html, false));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}
BENCHMARK(htmlToText)->Unit(benchmark::kMillisecond);

void unclosedTags(benchmark::State& state) {
    std::u16string html;
    while (html.size() < length)
        html += u"<head <x </head>";
    for (auto _ : state)
        benchmark::DoNotOptimize(g_HTMLtoText(html, false));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * html.size()));
}
BENCHMARK(unclosedTags)->Unit(benchmark::kMillisecond);

void copying(benchmark::State& state) {
    std::vector<char> to(page().size());
    for (auto _ : state) {
        std::memcpy(to.data(), page().data(), to.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}
BENCHMARK(copying)->Unit(benchmark::kMillisecond);

void html2textProgram(benchmark::State& state) {
    const auto file = std::filesystem::temp_directory_path() / "vlgs-html-bench.html";
    std::ofstream(file, std::ios::binary) << page();
    const std::string command = "html2text -o /dev/null '" + file.string() + "'";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("html2text is not installed");
            break;
        }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
    std::filesystem::remove(file);
}
BENCHMARK(html2textProgram)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace vlgs
