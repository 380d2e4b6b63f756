// SPDX-License-Identifier: MIT
#include "Document.h"
#include "HostText.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <optional>
#include <unordered_set>

namespace vlgs::cli {

namespace {

class Checker {
  public:
    void take(std::u16string_view line, std::optional<unsigned> undecodableIn) {
        ++line_;
        if (undecodableIn)
            find("bytes that are no characters in code page " + std::to_string(*undecodableIn), true);
        const auto equals = line.find(u'=');
        const auto open = line.find(u'[');
        const auto close = open == line.npos ? open : line.find(u']', open);
        if (hasSection_ && equals != line.npos)
            takeKey(trim(line.substr(0, equals)));
        else if (close != line.npos)
            takeSection(line, open, close);
        else if (equals != line.npos)
            find("a key before the first section", true);
        else if (!trim(line).empty())
            find("neither a section nor a key", true);
    }

    std::vector<Finding> findings;

  private:
    void find(std::string what, bool isLost) { findings.push_back({line_, std::move(what), isLost}); }

    void takeSection(std::u16string_view line, std::size_t open, std::size_t close) {
        const auto name = trim(line.substr(open + 1, close - open - 1));
        if (name.empty())
            return find("a section without a name: the file cannot be read", true);
        if (!trim(line.substr(0, open)).empty() || !trim(line.substr(close + 1)).empty())
            find("text beside the name of a section", true);
        section_ = foldCase(name);
        if (hasSection_ && !sections_.insert(section_.toUtf8()).second)
            find("section [" + toHost(name) + "] again; it is one section", false);
        else if (!std::exchange(hasSection_, true))
            sections_.insert(section_.toUtf8());
    }

    void takeKey(std::u16string_view name) {
        if (name.empty())
            return find("a key without a name: the file cannot be read", true);
        if (!keys_.insert(concat(section_, u"\n", foldCase(name)).toUtf8()).second)
            find("key " + toHost(name) + " again; the last one counts", true);
    }

    std::size_t line_ = 0;
    String section_;
    bool hasSection_ = false;
    std::unordered_set<std::string> sections_, keys_;
};

template <class Unit, class Take>
void forEachLine(std::basic_string_view<Unit> content, Take&& take) {
    while (!content.empty()) {
        const auto end = content.find(Unit('\n'));
        auto line = content.substr(0, end);
        content.remove_prefix(end == content.npos ? content.size() : end + 1);
        if (line.ends_with(Unit('\r')))
            line.remove_suffix(1);
        take(line);
    }
}

void checkUtf16(Checker& checker, std::string_view bytes, std::size_t high) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i + high]) << 8 |
                                      static_cast<unsigned char>(bytes[i + 1 - high]));
    forEachLine(std::u16string_view(text), [&](auto line) { checker.take(line, {}); });
}

} // namespace

std::vector<Finding> checkLines(const String& path) {
    const std::string content = readFile(path);
    const std::string_view bytes = content;
    Checker checker;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        checkUtf16(checker, bytes.substr(2), bytes.starts_with("\xFF") ? 1 : 0);
        return std::move(checker.findings);
    }
    const bool marked = bytes.starts_with("\xEF\xBB\xBF");
    const CodePage page = marked ? CodePage::find(65001).value() : CodePage::system();
    forEachLine(bytes.substr(marked ? 3 : 0), [&](std::string_view line) {
        checker.take(page.decode(line), page.isText(line) ? std::nullopt : std::optional(page.number()));
    });
    return std::move(checker.findings);
}

} // namespace vlgs::cli
