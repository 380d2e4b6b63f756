// SPDX-License-Identifier: MIT
// The files that locks are: their names, their contents, and which of them stand in each other's way.
//
// All lie in the project's folder. A name begins with two characters for the kind of lock ("rw" read-write,
// "ro" read-only, "ex" exclusive), and its extension tells what is locked: "~sr" the project, "~sd" the
// document whose GUID stands between the two. A lock is live while somebody holds its file open
// (FileHold.h); a file that nobody holds is stale, locks nothing and is deleted by whoever meets it. Only
// plain files are lock files; links and folders of such a name are passed over and stay.
#pragma once

#include "ini/INIFile.h"
#include "locking/UserLockTypes.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace vlgs {

inline constexpr std::u16string_view projectLockExtension = u"~sr";
inline constexpr std::u16string_view documentLockExtension = u"~sd";

/// The folder that a path lies in, with a final backslash; "" for a volume's root.
String folderOf(const String& path);

/// What a document lock file's name says behind the two characters for the kind of lock.
std::u16string_view documentOf(std::u16string_view name);

/// The names of the lock files of this extension in a folder that are wanted and live; of the wanted ones
/// those that are stale are deleted. Raises 70 when the folder cannot be read, 76 when there is none.
std::vector<String> liveLockFiles(const String& folder, std::u16string_view extension,
                                  const std::function<bool(std::u16string_view name)>& wanted);

/// Deletes all stale lock files of a folder, and ignores every failure.
void sweepLockFiles(const String& folder) noexcept;

/// What is to be locked: a project, or one of its documents.
class LockTarget {
  public:
    /// GUID texts are spelled as `General.GUID` writes them. Raises 52 for a document's text that cannot be
    /// part of a file name.
    LockTarget(const String& path, const std::optional<String>& document);

    const String& folder() const noexcept { return folder_; }
    bool isDocument() const noexcept { return document_.has_value(); }

    /// The name of the file for a lock of this kind: a new one for each project lock but the exclusive one.
    String fileNameFor(enumUserLockTypes type) const;

    /// Whether a lock of kind `type` may not be taken while this lock file is live.
    bool conflicts(enumUserLockTypes type, std::u16string_view name) const;

    /// The names of the live lock files in the way of a lock of kind `type`, without the file just `made` for
    /// it and without the one that the caller has, which counts in any case.
    std::vector<String> obstaclesTo(enumUserLockTypes type, std::u16string_view made,
                                    std::u16string_view own) const;

    /// Whether something that is no file has this name, so that no lock file can have it.
    bool isBlocked(std::u16string_view name) const;

  private:
    std::u16string_view extension() const noexcept {
        return document_ ? documentLockExtension : projectLockExtension;
    }

    String folder_;
    std::optional<String> document_;
};

/// What a lock file tells of its holder.
struct LockHolder {
    enumUserLockTypes access = eUserLock_ReadWrite;
    enumUserLockTypes requestedAccess = eUserLock_ReadWrite;
    String session;
    String path;
};

/// Makes a lock file and holds it from the first moment that anybody can find it; the document deletes it
/// when it is released. A character of the holder that the code page lacks, or that ends lines, becomes "?".
/// Raises as FileHold::create.
Ref<INIFile> makeLockFile(const String& path, const LockHolder& holder);

/// A lock file as its holder wrote it, bound to the file; without content when it cannot be read.
Ref<INIFile> readLockFile(const String& path);

/// Who holds a lock file, in the user's language: machine, session, since when, access; "?" for what the file
/// does not tell.
String holderText(const String& path);

} // namespace vlgs
