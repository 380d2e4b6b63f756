// SPDX-License-Identifier: MIT
#include "ini/INIText.h"

#include "base/Error.h"
#include "base/Text.h"
#include "ini/FailureMessage.h"
#include "ini/LineParser.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vlgs {

namespace {

// Cuts a run of chunks into lines. The line that a chunk leaves open is kept for the next one.
template <class Unit>
class LineCutter {
  public:
    using View = std::basic_string_view<Unit>;

    template <class Take>
    void cut(View chunk, Take&& take) {
        for (auto at = chunk.find(lineFeed); at != chunk.npos; at = chunk.find(lineFeed)) {
            if (open_.empty()) {
                take(withoutReturn(chunk.substr(0, at)));
            } else {
                open_.append(chunk, 0, at);
                take(withoutReturn(open_));
                open_.clear();
            }
            chunk.remove_prefix(at + 1);
        }
        open_.append(chunk);
    }
    template <class Take>
    void finish(Take&& take) {
        take(View(open_));
    }

  private:
    static constexpr Unit lineFeed = '\n';
    static View withoutReturn(View line) {
        return line.empty() || line.back() != Unit('\r') ? line : line.substr(0, line.size() - 1);
    }
    std::basic_string<Unit> open_;
};

constexpr std::size_t chunkSize = 65536;

// A file that ends: what grows under the reader is read as far as it went when it was opened, and a little
// more; pipes, whose length nobody knows, give up to this many bytes. Beyond that reading raises 7.
class EndingFile {
  public:
    explicit EndingFile(const String& path)
        : file_(path), left_(std::max(longestPipe, fileLength(path))), buffer_(chunkSize) {}

    // The next bytes, none at the end.
    std::string_view next() {
        const auto count = file_.read(buffer_.data(), buffer_.size());
        if (count > left_)
            raise(RunTimeError::OutOfMemory);
        left_ -= count;
        return {buffer_.data(), count};
    }

  private:
    static constexpr std::uint64_t longestPipe = 1u << 26;
    FileReader file_;
    std::uint64_t left_;
    std::vector<char> buffer_;
};

// Remembers the first line of a file whose bytes are no text.
class LossyLines {
  public:
    LossyLines(INIFile& document, const String& path) : document_(document), path_(path) {}

    // One more line, and whether its bytes are text.
    void count(bool isText, const CodePage& page) {
        ++lines_;
        if (!isText)
            tell(concat(u" has bytes that are no characters in code page ", decimal(page.number())));
    }
    void count() { ++lines_; }
    void tell(std::u16string_view what) {
        if (!std::exchange(told_, true))
            document_.SetLossyOrigin({fullPath(path_), concat(u"Line ", decimal(lines_), u" of the file",
                                                              what, u"; saving would lose them")});
    }

  private:
    INIFile& document_;
    const String& path_;
    std::int64_t lines_ = 0;
    bool told_ = false;
};

void readBytes(LineParser& parser, EndingFile& file, std::string_view chunk, const CodePage& page,
               LossyLines& lossy) {
    const auto take = [&](std::string_view line) {
        lossy.count(isAscii(line) || page.isText(line), page);
        parser.parse(line, page);
    };
    LineCutter<char> cutter;
    for (; !chunk.empty(); chunk = file.next())
        cutter.cut(chunk, take);
    cutter.finish(take);
}

// A last odd byte is no character.
void readUtf16(LineParser& parser, EndingFile& file, std::string_view chunk, std::endian order,
               LossyLines& lossy) {
    static_assert(chunkSize % sizeof(char16_t) == 0);
    const std::size_t high = order == std::endian::big ? 0 : 1;
    const auto take = [&](std::u16string_view line) {
        lossy.count();
        parser.parse(line);
    };
    LineCutter<char16_t> cutter;
    std::u16string units;
    bool isOdd = false;
    for (; !chunk.empty(); chunk = file.next()) {
        units.resize(chunk.size() / sizeof(char16_t));
        for (std::size_t i = 0; i < units.size(); ++i)
            units[i] = static_cast<char16_t>(static_cast<unsigned char>(chunk[2 * i + high]) << 8 |
                                             static_cast<unsigned char>(chunk[2 * i + 1 - high]));
        cutter.cut(units, take);
        isOdd = chunk.size() % sizeof(char16_t) != 0;
    }
    cutter.finish(take);
    if (isOdd)
        lossy.tell(u" ends in half a UTF-16 character");
}

void readMarked(LineParser& parser, EndingFile& file, LossyLines& lossy) {
    const auto chunk = file.next();
    if (chunk.starts_with("\xFF\xFE"))
        readUtf16(parser, file, chunk.substr(2), std::endian::little, lossy);
    else if (chunk.starts_with("\xFE\xFF"))
        readUtf16(parser, file, chunk.substr(2), std::endian::big, lossy);
    else if (chunk.starts_with("\xEF\xBB\xBF"))
        readBytes(parser, file, chunk.substr(3), CodePage::find(65001).value(), lossy);
    else
        readBytes(parser, file, chunk, CodePage::system(), lossy);
}

// Whatever goes wrong while lines are read becomes one error, which names the document and the cause.
template <class Read>
void readUnderOneError(std::u16string_view path, Read&& read) {
    try {
        read();
    } catch (...) {
        raiseForFailure(u"VlGeneralServices.modFiles.g_RetrieveINIFile", eMsg_ErrorReadingINIFileX, path);
    }
}

} // namespace

void readLines(INIFile& document, std::span<const std::u16string_view> lines) {
    readUnderOneError(document.FullPath(), [&] {
        LineParser parser(document);
        for (const auto line : lines)
            parser.parse(line);
    });
}

void readFileInto(INIFile& document, const String& path) {
    readUnderOneError(path, [&] {
        EndingFile file(path);
        LineParser parser(document);
        LossyLines lossy(document, path);
        readMarked(parser, file, lossy);
    });
}

} // namespace vlgs
