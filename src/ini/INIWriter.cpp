// SPDX-License-Identifier: MIT
#include "automation/Convert.h"
#include "base/Ascii.h"
#include "base/Text.h"
#include "ini/Buffer.h"
#include "ini/FailureMessage.h"
#include "ini/FreshSections.h"
#include "ini/INIText.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/LargePages.h"

#include <limits>
#include <optional>
#include <string>

namespace vlgs {

namespace {

// Shows members in order: `onFresh(members, place)` those that nobody has asked for yet, `onObject(property)`
// the others. What is shown may run code that changes the members.
template <auto fresh, class OnFresh, class OnObject>
void forEachMember(Collection& members, OnFresh&& onFresh, OnObject&& onObject) {
    for (std::int32_t position = 1; position <= members.Count(); ++position) {
        if (const auto* asRead = (members.*fresh)()) {
            const auto place = asRead->at(static_cast<std::uint32_t>(position) - 1);
            if (const Ref<const Property> object(asRead->knownObject(place)); object)
                onObject(*object);
            else
                onFresh(*asRead, place);
            continue;
        }
        const Ref<const Property> object(objectIn<Property>(members.Store()->at(position)));
        if (!object)
            raise(RunTimeError::TypeMismatch);
        onObject(*object);
    }
}

// Shows a document in order: `onSection(name)`, then `onKey(name, value)` for each of its keys. `textOf`
// makes a text of a key's value that is none yet.
template <class OnSection, class OnKey, class TextOf>
void visitDocument(const INIFile& document, OnSection&& onSection, OnKey&& onKey, TextOf&& textOf) {
    const auto onFreshKey = [&](const FreshKeys& keys, FreshKeys::Place key) {
        onKey(keys.name(key), keys.value(key));
    };
    const auto onKeyObject = [&](const Property& key) {
        const Variant& value = key.value();
        if (value.isString())
            onKey(key.name().view(), value.text().view());
        else
            onKey(key.name().view(), textOf(value).view());
    };
    const Ref<Collection> sections(document.sections());
    if (!sections)
        return;
    forEachMember<&Collection::freshSections>(
        *sections,
        [&](const FreshSections& fresh, FreshSections::Place section) {
            onSection(fresh.name(section));
            const FreshKeys& keys = fresh.keys(section);
            for (std::uint32_t position = 0; position < keys.count(); ++position) {
                keys.prefetch(position + FreshKeys::recordsAhead);
                const auto key = keys.at(position);
                if (const Property* object = keys.knownObject(key))
                    onKeyObject(*object);
                else
                    onFreshKey(keys, key);
            }
        },
        [&](const Property& section) {
            onSection(section.name().view());
            if (const Ref<Collection> keys(objectIn<Collection>(&section.value())); keys)
                forEachMember<&Collection::freshKeys>(*keys, onFreshKey, onKeyObject);
        });
}

// Hands out the text of a document piece by piece.
template <class Put, class TextOf>
void writeDocument(const INIFile& document, StoredText lineEnd, Put&& put, TextOf&& textOf) {
    const auto line = [&](auto... pieces) { (put(StoredText(pieces)), ...); };
    using namespace std::string_view_literals;
    visitDocument(
        document, [&](StoredText name) { line(lineEnd, "["sv, name, "]"sv, lineEnd); },
        [&](StoredText name, StoredText value) { line(name, "="sv, value, lineEnd); }, textOf);
    put(lineEnd);
}

// The length of the document's text, nothing when a value has to be made a text first.
std::optional<std::size_t> lengthOf(const INIFile& document, StoredText lineEnd) {
    std::size_t length = 0;
    bool known = true;
    writeDocument(
        document, lineEnd, [&](StoredText piece) { length += piece.length(); },
        [&](const Variant&) {
            known = false;
            return String();
        });
    return known ? std::optional(length) : std::nullopt;
}

// Making a text of a value may run any code, so the length cannot be known before.
String textWithOddValues(const INIFile& document, StoredText lineEnd) {
    std::u16string text;
    writeDocument(
        document, lineEnd,
        [&](StoredText piece) { piece.visit([&](auto view) { text.append(view.begin(), view.end()); }); },
        [](const Variant& value) { return toText(value); });
    return text;
}

String textOf(const INIFile& document, StoredText lineEnd) {
    const auto length = lengthOf(document, lineEnd);
    if (!length)
        return textWithOddValues(document, lineEnd);
    if (*length > std::numeric_limits<std::int32_t>::max() / sizeof(char16_t))
        raise(RunTimeError::Overflow);
    return String::build(*length, [&](char16_t* to) {
        if (*length * sizeof *to >= largeBlock)
            preferLargePages(to, *length * sizeof *to);
        writeDocument(
            document, lineEnd, [&](StoredText piece) { to = piece.copyTo(to); },
            [](const Variant&) { return String(); });
    });
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
    String digits;
    for (int shift = 20; shift >= 0; shift -= 4)
        if (shift < 16 || number >> shift)
            digits += ascii::hexDigits.substr(number >> shift & 15, 1);
    throw Error(static_cast<std::int32_t>(RunTimeError::InvalidProcedureCall), String(),
                concat(place, u" has the character \"", character, u"\" (U+", digits, u"), which code page ",
                       decimal(page.number()), u" does not hold"));
}

// Names the first character of a document that the code page does not hold, with its place.
void refuseLackingCharacters(const INIFile& document, const CodePage& page) {
    String section;
    const auto check = [&](StoredText text, auto&& placeOf) {
        const String wide = text.toString();
        if (const auto lacking = firstLacking(page, wide); !lacking.empty())
            raiseForCharacter(placeOf(), lacking, page);
    };
    visitDocument(
        document,
        [&](StoredText name) {
            section = name.toString();
            check(name, [&] { return concat(u"The name of section \"", section, u"\""); });
        },
        [&](StoredText name, StoredText value) {
            const auto placeOf = [&](std::u16string_view part) {
                return concat(part, u" of key \"", name.toString(), u"\" in section \"", section, u"\"");
            };
            check(name, [&] { return placeOf(u"The name"); });
            check(value, [&] { return placeOf(u"The value"); });
        },
        [](const Variant& value) { return toText(value); });
}

} // namespace

FileBytes encodedText(const INIFile& document) {
    const CodePage page = CodePage::system();
    const StoredText lineEnd = std::string_view("\r\n");
    // A guess, which is enough for what was read as plain text and not changed since.
    const auto* fresh = document.sections() ? document.sections()->freshSections() : nullptr;
    FileBytes bytes(fresh ? fresh->arenaSize() : 0);
    bool exact = true;
    std::string encoded;
    const auto append = [&](auto text) {
        if constexpr (sizeof text[0] == 1) {
            bytes.append(text);
        } else {
            encoded.clear();
            exact = page.append(encoded, text) && exact;
            bytes.append(encoded);
        }
    };
    writeDocument(
        document, lineEnd, [&](StoredText piece) { piece.visit(append); },
        [](const Variant& value) { return toText(value); });
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
        const FileBytes bytes = encodedText(document);
        const auto before = findAttributes(path);
        ReplaceOptions options;
        if (before && has(*before, FileAttributes::Hidden)) {
            options.attributes = FileAttributes::Hidden;
            options.evenReadOnly = true;
        }
        replaceFile(path, bytes.view(), options);
        if (!sSaveAs.empty())
            document.SetFullPath(sSaveAs);
    } catch (...) {
        raiseForFailure(u"VlGeneralServices.modFiles.g_SaveINIFile", eMsg_ErrorSavingINIFileX);
    }
}

Variant g_GetStreamFromINI(const INIFile& document, enumStreamTypes eStreamType, const String& sDelimiter) {
    try {
        String text = textOf(document, sDelimiter.view());
        if (eStreamType == eStream_String)
            return text;
        const auto buffer = make<Buffer>();
        buffer->SetDelimiter(sDelimiter);
        buffer->putText(text);
        text = String();
        return buffer->GetData(eStreamType, String());
    } catch (...) {
        raiseForFailure(u"VlGeneralServices.modFiles.g_GetStreamFromINI", eMsg_StreamingErrorX);
    }
}

} // namespace vlgs
