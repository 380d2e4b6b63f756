// SPDX-License-Identifier: MIT
#include "locking/LockFiles.h"

#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "files/ProjectFiles.h"
#include "frame/Errors.h"
#include "frame/MessageCatalogue.h"
#include "frame/Resource.h"
#include "ini/INIText.h"
#include "ini/PathParts.h"
#include "platform/CodePage.h"
#include "platform/FileTime.h"
#include "platform/Files.h"
#include "platform/Guid.h"
#include "platform/Machine.h"
#include "platform/Volumes.h"

#include <algorithm>

namespace vlgs {

namespace {

constexpr std::u16string_view userSection = u"User";

struct LockKind {
    enumUserLockTypes type;
    std::u16string_view prefix;
    std::u16string_view access;
};
constexpr LockKind kinds[] = {
    {eUserLock_ReadWrite, u"rw", u"ReadWrite"},
    {eUserLock_ReadOnly, u"ro", u"ReadOnly"},
    {eUserLock_Exclusive, u"ex", u"Exclusive"},
};

const LockKind& kindOf(enumUserLockTypes type) {
    return *std::ranges::find(kinds, type, &LockKind::type);
}

/// The kind that a lock file's name tells, null for a name of another form.
const LockKind* kindNamedBy(std::u16string_view name) {
    const auto found = std::ranges::find_if(
        kinds, [&](const LockKind& kind) { return equalIgnoringCase(name.substr(0, 2), kind.prefix); });
    return found == std::end(kinds) ? nullptr : found;
}

/// Deletes a file that nobody has open; false when it stays.
bool deleteStale(const String& path) {
    try {
        deleteFile(path);
        return true;
    } catch (const Error& error) {
        // Somebody else may have been quicker.
        return error.is(RunTimeError::FileNotFound) || error.is(RunTimeError::PathNotFound);
    }
}

/// A document's GUID as a part of a file name.
String documentName(const String& text) {
    if (const auto parsed = parseGuid(text))
        return guidText(*parsed);
    // A dot would end what `documentOf` sees.
    const bool fits = !text.empty() && std::ranges::all_of(text.view(), [](char16_t c) {
        return c >= u' ' && std::u16string_view(u".\\/:*?\"<>|").find(c) == std::u16string_view::npos;
    });
    if (!fits)
        raise(RunTimeError::BadFileNumber);
    return text;
}

/// A text that a line of the file can hold.
String storable(std::u16string_view text, const CodePage& page) {
    std::u16string plain(text);
    std::ranges::replace_if(
        plain, [](char16_t c) { return c < u' '; }, u'?');
    return page.decode(page.encode(plain));
}

} // namespace

String folderOf(const String& path) {
    const String full = fullPath(path);
    std::u16string_view folder = full;
    if (folder.ends_with(u'\\'))
        folder.remove_suffix(1);
    return folder.substr(0, folder.rfind(u'\\') + 1);
}

std::u16string_view documentOf(std::u16string_view name) {
    name.remove_prefix(std::min<std::size_t>(name.size(), 2));
    return name.substr(0, name.find(u'.'));
}

std::vector<String> liveLockFiles(const String& folder, std::u16string_view extension,
                                  const std::function<bool(std::u16string_view)>& wanted) {
    std::vector<String> live;
    for (const auto& [name, attributes] : listFolder(folder, extension))
        if (attributes == FileAttributes::Normal && wanted(name) && !deleteStale(concat(folder, name)))
            live.push_back(name);
    return live;
}

void sweepLockFiles(const String& folder) noexcept {
    for (const auto extension : {projectLockExtension, documentLockExtension}) {
        try {
            liveLockFiles(folder, extension, [](std::u16string_view) { return true; });
        } catch (...) {
            // Stale files that stay lock nothing either.
        }
    }
}

LockTarget::LockTarget(const String& path, const std::optional<String>& document) : folder_(folderOf(path)) {
    if (document)
        document_ = documentName(*document);
}

String LockTarget::fileNameFor(enumUserLockTypes type) const {
    if (!document_ && type == eUserLock_Exclusive)
        return concat(u"exclusive.", projectLockExtension);
    return concat(kindOf(type).prefix, document_ ? *document_ : guidText(createGuid()), u".", extension());
}

bool LockTarget::conflicts(enumUserLockTypes type, std::u16string_view name) const {
    const auto* kind = kindNamedBy(name);
    if (!kind || kind->type == eUserLock_ReadOnly || type == eUserLock_ReadOnly)
        return false;
    if (document_)
        return equalIgnoringCase(documentOf(name), *document_);
    return type == eUserLock_Exclusive || kind->type == eUserLock_Exclusive;
}

std::vector<String> LockTarget::obstaclesTo(enumUserLockTypes type, std::u16string_view made,
                                            std::u16string_view own) const {
    return liveLockFiles(folder_, extension(), [&](std::u16string_view name) {
        return name != made && !equalIgnoringCase(name, own) && conflicts(type, name);
    });
}

bool LockTarget::isBlocked(std::u16string_view name) const {
    const auto entries = listFolder(folder_, extension());
    return std::ranges::any_of(entries, [&](const FolderEntry& entry) {
        return equalIgnoringCase(entry.name, name) && entry.attributes != FileAttributes::Normal;
    });
}

Ref<INIFile> makeLockFile(const String& path, const LockHolder& holder) {
    const auto page = CodePage::system();
    auto file = g_CreateINIFile(path, eINI_INI);
    const auto add = [&](std::u16string_view key, std::u16string_view value) {
        file->CreateKey(String(userSection), key, storable(value, page));
    };
    add(u"Access", kindOf(holder.access).access);
    add(u"RequestedAccess", kindOf(holder.requestedAccess).access);
    add(u"SessionID", holder.session);
    add(u"Path", holder.path);
    add(u"Machine", machineName());
    file->CreateLocked();
    file->SetDelayedDelete(true);
    return file;
}

Ref<INIFile> readLockFile(const String& path) {
    auto file = g_CreateINIFile(path, eINI_INI);
    try {
        readFileInto(*file, path);
    } catch (const Error&) {
        file->Clear();
    }
    file->Sections(); // also of a file without any
    return file;
}

String holderText(const String& path) {
    const auto file = readLockFile(path);
    const auto told = [&](const char16_t* key) {
        const String value = file->KeyValue(String(userSection), key);
        return Variant(value.empty() ? String(u"?") : value);
    };
    Variant access = told(u"Access");
    if (const auto* kind = kindNamedBy(filePart(path)); kind && access.text() == u"?")
        access = String(kind->access);
    const auto since = lastWritten(path);
    return replaceParameters(GetMessageCatalogue()->ResourceString(eMsg_UserLockHolder),
                             Array::ofVariants({since ? Variant(toText(dateOf(*since))) : Variant(u"?"),
                                                told(u"Machine"), told(u"SessionID"), access}));
}

} // namespace vlgs
