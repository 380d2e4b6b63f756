#include "ini/INIText.h"

#include "automation/Convert.h"
#include "base/Text.h"
#include "frame/Errors.h"
#include "ini/Buffer.h"
#include "ini/LineParser.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <bit>
#include <cstdio>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace vlgs {

namespace {

constexpr std::u16string_view lineEnd = u"\r\n";

// ---- Writing ----

template <class T, class Visit>
void forEach(const Collection* members, Visit&& visit) {
    const OrderedStore* store = members ? members->store() : nullptr;
    for (std::int32_t position = 1; store && position <= store->count(); ++position) {
        const T* member = objectIn<T>(store->at(position));
        if (!member)
            raise(RunTimeError::TypeMismatch);
        visit(*member);
    }
}

// Hands out the lines of a document, each as the pieces of its text.
template <class Put>
void writeLines(const INIFile& document, Put&& put) {
    const std::u16string_view open = u"[", close = u"]", equals = u"=";
    forEach<Property>(document.sections(), [&](const Property& section) {
        put();
        put(open, section.name().view(), close);
        if (!section.value().isObject())
            return;
        forEach<Property>(objectIn<Collection>(&section.value()), [&](const Property& key) {
            if (key.value().isString())
                put(key.name().view(), equals, key.value().text().view());
            else
                put(key.name().view(), equals, toText(key.value()).view());
        });
    });
    put();
}

// The first character of a text that the code page does not hold, "" when it holds all.
std::u16string_view firstLacking(const CodePage& page, std::u16string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const bool isPair =
            (text[at] & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
        const auto character = text.substr(at, isPair ? 2 : 1);
        if (!page.encodeExactly(character))
            return character;
        at += character.size();
    }
    return {};
}

[[noreturn]] void raiseForCharacter(std::u16string_view place, std::u16string_view character,
                                    const CodePage& page) {
    std::uint32_t number = character[0];
    if (character.size() == 2)
        number = 0x10000 + ((number & 0x3FF) << 10 | (character[1] & 0x3FFu));
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04X", static_cast<unsigned>(number));
    throw Error(static_cast<std::int32_t>(RunTimeError::InvalidProcedureCall), String(),
                concat(place, u" has the character \"", character, u"\" (U+", String::fromUtf8(digits),
                       u"), which code page ", decimal(page.number()), u" does not hold"));
}

// Names the first character of a document that the code page does not hold, with its place.
void refuseLackingCharacters(const INIFile& document, const CodePage& page) {
    forEach<Property>(document.sections(), [&](const Property& section) {
        if (const auto lacking = firstLacking(page, section.name()); !lacking.empty())
            raiseForCharacter(concat(u"The name of section \"", section.name(), u"\""), lacking, page);
        if (!section.value().isObject())
            return;
        forEach<Property>(objectIn<Collection>(&section.value()), [&](const Property& key) {
            const auto place = [&](std::u16string_view part) {
                return concat(part, u" of key \"", key.name(), u"\" in section \"", section.name(), u"\"");
            };
            if (const auto lacking = firstLacking(page, key.name()); !lacking.empty())
                raiseForCharacter(place(u"The name"), lacking, page);
            const auto value = toText(key.value());
            if (const auto lacking = firstLacking(page, value); !lacking.empty())
                raiseForCharacter(place(u"The value"), lacking, page);
        });
    });
}

// Raises a catalogue error for the failure that is being handled.
[[noreturn]] void raiseForFailure(const String& source, std::int32_t message, std::u16string_view lead = {}) {
    String description;
    try {
        throw;
    } catch (const Error& error) {
        description = error.description();
    } catch (const std::bad_alloc&) {
        description = Error(RunTimeError::OutOfMemory).description();
    }
    raiseMessage(source, message, concat(lead, lead.empty() ? u"" : lineEnd, description));
}

// ---- Reading ----

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

void readBytes(LineParser& parser, FileReader& file, std::string_view chunk, std::vector<char>& buffer,
               const CodePage& page, LossyLines& lossy) {
    const bool bytewise = LineParser::bytewise(page);
    const auto take = [&](std::string_view line) {
        lossy.count(page.isText(line), page);
        if (bytewise)
            parser.parse(line, page);
        else
            parser.parse(page.decode(line));
    };
    LineCutter<char> cutter;
    for (; !chunk.empty(); chunk = {buffer.data(), file.read(buffer.data(), chunkSize)})
        cutter.cut(chunk, take);
    cutter.finish(take);
}

// A last odd byte is no character.
void readUtf16(LineParser& parser, FileReader& file, std::string_view chunk, std::vector<char>& buffer,
               std::endian order, LossyLines& lossy) {
    static_assert(chunkSize % sizeof(char16_t) == 0);
    const std::size_t high = order == std::endian::big ? 0 : 1;
    const auto take = [&](std::u16string_view line) {
        lossy.count();
        parser.parse(line);
    };
    LineCutter<char16_t> cutter;
    std::u16string units;
    bool isOdd = false;
    for (; !chunk.empty(); chunk = {buffer.data(), file.read(buffer.data(), chunkSize)}) {
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

void readMarked(LineParser& parser, FileReader& file, LossyLines& lossy) {
    std::vector<char> buffer(chunkSize);
    const std::string_view chunk(buffer.data(), file.read(buffer.data(), chunkSize));
    if (chunk.starts_with("\xFF\xFE"))
        readUtf16(parser, file, chunk.substr(2), buffer, std::endian::little, lossy);
    else if (chunk.starts_with("\xFE\xFF"))
        readUtf16(parser, file, chunk.substr(2), buffer, std::endian::big, lossy);
    else if (chunk.starts_with("\xEF\xBB\xBF"))
        readBytes(parser, file, chunk.substr(3), buffer, CodePage::find(65001).value(), lossy);
    else
        readBytes(parser, file, chunk, buffer, CodePage::system(), lossy);
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

std::string encodedText(const INIFile& document) {
    const CodePage page = CodePage::system();
    std::string bytes;
    bool exact = true;
    writeLines(document, [&](auto... pieces) {
        ((exact = page.append(bytes, pieces) && exact), ...);
        page.append(bytes, lineEnd);
    });
    if (!exact)
        refuseLackingCharacters(document, page);
    return bytes;
}

void g_SaveINIFile(INIFile& document, const String& sSaveAs) {
    try {
        const String path = sSaveAs.empty() ? document.FullPath() : sSaveAs;
        const auto& lossy = document.lossyOrigin();
        if (!lossy.reason.empty() && isSameFile(path, lossy.path))
            throw Error(static_cast<std::int32_t>(RunTimeError::InvalidProcedureCall), String(),
                        lossy.reason);
        const std::string bytes = encodedText(document);
        const auto before = findAttributes(path);
        ReplaceOptions options;
        if (before && has(*before, FileAttributes::Hidden)) {
            options.attributes = FileAttributes::Hidden;
            options.evenReadOnly = true;
        }
        replaceFile(path, bytes, options);
        if (!sSaveAs.empty())
            document.SetFullPath(sSaveAs);
    } catch (...) {
        raiseForFailure(u"VlGeneralServices.modFiles.g_SaveINIFile", eMsg_ErrorSavingINIFileX);
    }
}

Variant g_GetStreamFromINI(const INIFile& document, enumStreamTypes eStreamType, const String& sDelimiter) {
    try {
        const auto buffer = make<Buffer>();
        buffer->SetDelimiter(sDelimiter);
        writeLines(document, [&](auto... pieces) { buffer->putText(pieces..., sDelimiter); });
        return buffer->GetData(eStreamType, String());
    } catch (...) {
        raiseForFailure(u"VlGeneralServices.modFiles.g_GetStreamFromINI", eMsg_StreamingErrorX);
    }
}

void readLines(INIFile& document, std::span<const std::u16string_view> lines) {
    readUnderOneError(document.FullPath(), [&] {
        LineParser parser(document);
        for (const auto line : lines)
            parser.parse(line);
    });
}

void readFileInto(INIFile& document, const String& path) {
    readUnderOneError(path, [&] {
        FileReader file(path);
        LineParser parser(document);
        LossyLines lossy(document, path);
        readMarked(parser, file, lossy);
    });
}

} // namespace vlgs
