// SPDX-License-Identifier: MIT
// String resources from text files. The first file holds the lowest block of numbers and names the files of
// the others, which are read when a number of theirs is wanted first.
#include "platform/StringResources.h"

#include "base/CaseFold.h"
#include "platform/Files.h"
#include "platform/Module.h"
#include "platform/posix/BuiltInTexts.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

namespace vlgs {

namespace {

/// Numbers from `base` on, in order once the file is read.
struct Block {
    std::int32_t base = 0;
    String file;
    bool isRead = false;
    std::vector<std::pair<std::int32_t, String>> texts;
};

String unescape(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        switch (text[++i]) {
        case 'n':
            result += "\r\n";
            break;
        case 't':
            result += '\t';
            break;
        case 's':
            result += ' ';
            break;
        default:
            result += text[i];
        }
    }
    return String::fromUtf8(result);
}

/// A line "NUMBER<TAB>TEXT"; anything else is none.
std::optional<std::pair<std::int32_t, std::string_view>> numberedLine(std::string_view line) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc() || end == line.data() + line.size() || *end != '\t')
        return std::nullopt;
    return std::pair(number, line.substr(static_cast<std::size_t>(end - line.data()) + 1));
}

std::vector<std::string_view> linesOf(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    std::vector<std::string_view> lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

std::u16string_view folderOf(std::u16string_view path) {
    const std::size_t slash = path.rfind(u'\\');
    return slash == std::u16string_view::npos ? std::u16string_view() : path.substr(0, slash);
}

/// Whether the library's own texts are meant.
bool isOwn(std::u16string_view path) {
    const String own = moduleFolder();
    std::u16string_view folder = own;
    if (folder.ends_with(u'\\'))
        folder.remove_suffix(1);
    return equalIgnoringCase(folderOf(path), folder);
}

/// The first file of a resource file, whether or not it is there.
String firstFileOf(std::u16string_view path) {
    const std::u16string_view folder = folderOf(path);
    std::u16string_view name = path.substr(folder.empty() ? 0 : folder.size() + 1);
    name = name.substr(0, name.rfind(u'.'));
    const String file = concat(name, u".en.txt");
    for (const String& candidate : {concat(folder, u"\\", file), concat(folder, u"\\resources\\", file)})
        if (fileExists(candidate))
            return candidate;
    String shared = isOwn(path) ? resourcePath(file) : String();
    return shared.empty() ? concat(folder, u"\\", file) : shared;
}

/// What was built in under the name of a file.
std::optional<std::string> builtIn(std::u16string_view file) {
    const std::u16string_view name = file.substr(folderOf(file).size() + 1);
    for (const auto& text : posix::builtInTexts())
        if (equalIgnoringCase(String::fromUtf8(text.file), name))
            return std::string(text.content);
    return std::nullopt;
}

class TextFiles final : public StringResources {
  public:
    explicit TextFiles(std::u16string_view path) : isOwn_(isOwn(path)) {
        blocks_.push_back({0, firstFileOf(path), false, {}});
        read(0);
    }

    std::optional<String> load(std::int32_t number) override {
        const auto block = std::find_if(blocks_.rbegin(), blocks_.rend(),
                                        [&](const Block& candidate) { return candidate.base <= number; });
        if (block == blocks_.rend())
            return std::nullopt;
        const auto index = static_cast<std::size_t>(blocks_.rend() - block) - 1;
        if (!block->isRead)
            read(index);
        const auto& texts = blocks_[index].texts;
        const auto found =
            std::lower_bound(texts.begin(), texts.end(), number,
                             [](const auto& entry, std::int32_t wanted) { return entry.first < wanted; });
        if (found == texts.end() || found->first != number)
            return std::nullopt;
        return found->second;
    }

  private:
    void read(std::size_t index) {
        const String file = blocks_[index].file;
        const std::int32_t base = blocks_[index].base;
        const std::string bytes = contentOf(file);
        std::vector<std::pair<std::int32_t, String>> texts;
        for (const std::string_view line : linesOf(bytes)) {
            if (const auto text = numberedLine(line))
                add(texts, std::int64_t{base} + text->first, text->second);
            else if (line.starts_with('@'))
                include(line.substr(1), folderOf(file));
        }
        const auto byNumber = [](const auto& a, const auto& b) { return a.first < b.first; };
        std::stable_sort(texts.begin(), texts.end(), byNumber);
        blocks_[index].texts = std::move(texts);
        blocks_[index].isRead = true;
    }

    /// A number beyond all that can be asked for is passed over.
    static void add(std::vector<std::pair<std::int32_t, String>>& texts, std::int64_t number,
                    std::string_view text) {
        if (std::in_range<std::int32_t>(number))
            texts.emplace_back(static_cast<std::int32_t>(number), unescape(text));
    }

    std::string contentOf(const String& file) const {
        if (fileExists(file))
            return readFile(file);
        if (auto content = isOwn_ ? builtIn(file) : std::nullopt)
            return *std::move(content);
        raiseMissing(file);
    }

    /// A line "@BASE<TAB>FILE": the texts of that file, beside this one, have the numbers from BASE on.
    void include(std::string_view line, std::u16string_view folder) {
        const auto entry = numberedLine(line);
        if (entry && entry->first > blocks_.back().base)
            blocks_.push_back(
                {entry->first, concat(folder, u"\\", String::fromUtf8(entry->second)), false, {}});
    }

    bool isOwn_;
    std::vector<Block> blocks_; // by their bases
};

} // namespace

std::unique_ptr<StringResources> StringResources::open(std::u16string_view path) {
    return std::make_unique<TextFiles>(path);
}

} // namespace vlgs
