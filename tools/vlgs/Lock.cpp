// SPDX-License-Identifier: MIT
#include "Lock.h"

#include "HostText.h"
#include "InputFile.h"
#include "LockKeeper.h"
#include "Misuse.h"
#include "Print.h"
#include "Words.h"
#include "base/Error.h"
#include "locking/CorvaTools.h"
#include "locking/LockFiles.h"
#include "platform/FileTime.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vlgs::cli {

namespace {

constexpr std::u16string_view userSection = u"User";

struct TakeRequest {
    String path;
    std::optional<String> document;
    String session;
    enumUserLockTypes type = eUserLock_ReadWrite;
    bool fallsBack = false;
    bool json = false;
    std::vector<std::string> command;
};

TakeRequest parseTake(std::span<const std::string_view> words) {
    TakeRequest request;
    std::optional<std::string_view> path;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto word = words[i];
        const auto value = [&] {
            if (++i == words.size())
                throw Misuse(std::string(word) + " needs a value");
            return fromHost(words[i]);
        };
        if (word == "--exclusive" || word == "--read-only") {
            if (request.type != eUserLock_ReadWrite)
                throw Misuse("a lock is either exclusive or read-only");
            request.type = word == "--exclusive" ? eUserLock_Exclusive : eUserLock_ReadOnly;
        } else if (word == "--fallback") {
            request.fallsBack = true;
        } else if (word == "--json") {
            request.json = true;
        } else if (word == "--document") {
            request.document = value();
        } else if (word == "--session") {
            request.session = value();
        } else if (word == "--") {
            request.command.assign(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            if (request.command.empty())
                throw Misuse("a command is missing behind --");
            break;
        } else if (word.starts_with("-")) {
            throw Misuse("lock take knows no option " + std::string(word));
        } else if (path) {
            throw Misuse("lock take needs one path; a command stands behind --");
        } else {
            path = word;
        }
    }
    if (request.json && !request.command.empty())
        throw Misuse("lock take prints nothing when it runs a command: --json is of no use");
    if (!path)
        throw Misuse("lock take needs the path of a file in the project's folder");
    request.path = fromHost(*path);
    // The lock of a folder that is named by itself would be one of the folder above.
    if (folderExists(request.path))
        throw Misuse("lock take needs the path of a file in the project's folder, and " + std::string(*path) +
                     " is a folder");
    return request;
}

struct Granted {
    Ref<INIFile> lock;
    enumUserLockTypes type = eUserLock_ReadOnly;

    const char16_t* access() const {
        return type == eUserLock_ReadOnly    ? u"ReadOnly"
               : type == eUserLock_Exclusive ? u"Exclusive"
                                             : u"ReadWrite";
    }
};

Granted takeLock(const TakeRequest& request) {
    const auto tools = make<CorvaTools>();
    const auto type = enumUserLockTypes(
        request.type | (request.fallsBack ? eUserLock_FallbackToReadOnly : eUserLock_ReadWrite));
    Granted granted;
    granted.lock = request.document
                       ? tools->InitiateDocLock(request.path, *request.document, type, nullptr, &granted.type,
                                                request.session)
                       : tools->InitiateLock3(request.path, type, nullptr, &granted.type, request.session);
    return granted;
}

int take(std::span<const std::string_view> words) {
    const auto request = parseTake(words);
    if (!request.command.empty()) {
        const auto granted = takeLock(request);
        return runCommand(request.command, "VLGS_LOCK_ACCESS", String(granted.access()).toUtf8());
    }
    const String answer = startKeeper([&]() -> KeptLock {
        const auto granted = takeLock(request);
        return {granted.lock,
                concat(granted.access(), u"\t", granted.lock ? granted.lock->FullPath() : String())};
    });
    if (!request.json) {
        std::cout << toHost(answer) << '\n';
        return 0;
    }
    Json json(std::cout);
    json.object([&] {
        const auto tab = answer.view().find(u'\t');
        json.field("access", answer.view().substr(0, tab));
        json.field("file", answer.view().substr(tab + 1));
    });
    json.end();
    return 0;
}

// What a lock file tells, and whether it locks anything.
struct LockFile {
    String name;
    bool isLive = false;
    std::vector<std::pair<const char*, String>> fields;
};

LockFile lockFileOf(const String& folder, const String& name, bool isDocument) {
    const String path = concat(folder, name);
    const auto file = readLockFile(path);
    const auto since = lastWritten(path);
    return {name,
            false,
            {{"access", file->KeyValue(String(userSection), u"Access")},
             {"document", isDocument ? String(documentOf(name)) : String()},
             {"machine", file->KeyValue(String(userSection), u"Machine")},
             {"session", file->KeyValue(String(userSection), u"SessionID")},
             {"since", since ? fromHost(isoText(dateOf(*since))) : String()},
             {"file", path}}};
}

std::vector<LockFile> lockFilesIn(const String& folder) {
    std::vector<LockFile> files;
    for (const auto extension : {projectLockExtension, documentLockExtension}) {
        const auto first = files.size();
        for (const auto& [name, attributes] : listFolder(folder, extension))
            if (attributes == FileAttributes::Normal)
                files.push_back(lockFileOf(folder, name, extension == documentLockExtension));
        std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end(),
                  [](const LockFile& a, const LockFile& b) { return a.name < b.name; });
        const auto live = liveLockFiles(folder, extension, [](auto) { return true; });
        const std::set<String> names(live.begin(), live.end());
        for (auto i = first; i < files.size(); ++i)
            files[i].isLive = names.contains(files[i].name);
    }
    return files;
}

int status(std::span<const std::string_view> given) {
    const Words words("lock status", given, {"--json"});
    words.need(1, 1, "the project's folder, or one path in it");
    const String path = fromHost(words[0]);
    if (!folderExists(path) && !fileExists(fullPath(path)))
        readNamed(words[0]); // tells that it is not there
    const auto files = lockFilesIn(folderOf(folderExists(path) ? concat(fullPath(path), u"\\*") : path));
    const auto stateOf = [](const LockFile& file) { return file.isLive ? "live" : "stale"; };
    if (!words.has("--json")) {
        for (const auto& file : files) {
            std::cout << stateOf(file);
            for (const auto& [name, value] : file.fields)
                std::cout << '\t' << toHost(value);
            std::cout << '\n';
        }
        return 0;
    }
    Json json(std::cout, Json::Layout::Entries);
    json.array([&] {
        for (const auto& file : files)
            json.object([&] {
                json.field("state", stateOf(file));
                for (const auto& [name, value] : file.fields)
                    json.field(name, value);
            });
    });
    json.end();
    return 0;
}

int release(std::span<const std::string_view> words) {
    if (words.size() != 1)
        throw Misuse("lock release needs the file that lock take has printed");
    endKeeper(fromHost(words.front()));
    return 0;
}

} // namespace

int lock(std::span<const std::string_view> words) {
    return runSubcommand("lock", words, {{"take", take}, {"status", status}, {"release", release}});
}

} // namespace vlgs::cli
