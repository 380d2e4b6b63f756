// SPDX-License-Identifier: MIT
// Files and folders: what is there, its attributes and content, and changes that are done whole or not at
// all.
//
// Paths are library paths (Volumes.h), "/" taken for "\". Unless a function says otherwise it raises, with no
// source: 53 file not found, 76 folder of the path not found, 70 permission denied (a folder where a file is
// wanted, a read-only file that would be written or deleted, a file that is held: FileHold.h), 58 file
// already there, 61 disk full (quotas and size limits too), 57 device error, 52 a name the host cannot have,
// 75 any other failure. Content is bytes, kept in std::string.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs {

/// Attribute bits, with the numbers of Windows. Normal is no bit at all.
///
/// On hosts without them: ReadOnly is a file without any write permission, for the administrator too. Hidden,
/// System and Archive are kept in the extended attribute user.DOSATTRIB in the form that Samba and Wine use;
/// where the file system has no such attributes they are lost, and a name that begins with "." is Hidden.
enum class FileAttributes : std::uint32_t {
    Normal = 0,
    ReadOnly = 0x1,
    Hidden = 0x2,
    System = 0x4,
    Directory = 0x10,
    Archive = 0x20,
    /// A symbolic link or the like. Only `listFolder` reports it; everything else is told of the link's
    /// target.
    Link = 0x400,
};
constexpr FileAttributes operator|(FileAttributes a, FileAttributes b) noexcept {
    return FileAttributes(std::uint32_t(a) | std::uint32_t(b));
}
constexpr FileAttributes operator&(FileAttributes a, FileAttributes b) noexcept {
    return FileAttributes(std::uint32_t(a) & std::uint32_t(b));
}
constexpr FileAttributes operator~(FileAttributes a) noexcept {
    return FileAttributes(~std::uint32_t(a));
}
constexpr bool has(FileAttributes attributes, FileAttributes any) noexcept {
    return (attributes & any) != FileAttributes::Normal;
}

/// The attributes of what a path names, nothing when there is no such thing or it cannot be seen. Never
/// raises.
std::optional<FileAttributes> findAttributes(std::u16string_view path) noexcept;

/// Whether a path names a file, a folder, either. Never raise; a path with a final backslash names a folder.
bool fileExists(std::u16string_view path) noexcept;
bool folderExists(std::u16string_view path) noexcept;
bool pathExists(std::u16string_view path) noexcept;

/// Whether two paths lead to one file or folder, through links too. False when one of them leads nowhere.
bool isSameFile(std::u16string_view path, std::u16string_view other) noexcept;

/// Whether a directory listing of exactly this path shows it, the listing restricted as the run time's Dir
/// function does: plain files always, and what is Hidden, System or a Directory only when `include` has that
/// attribute. "*" and "?" are ordinary characters. Never raises.
bool isListed(std::u16string_view path, FileAttributes include = FileAttributes::Normal) noexcept;

FileAttributes attributes(std::u16string_view path);

/// Sets ReadOnly, Hidden, System and Archive as given and takes away the others; other bits are ignored.
void setAttributes(std::u16string_view path, FileAttributes attributes);

/// The length of a file in bytes.
std::uint64_t fileLength(std::u16string_view path);

/// The whole content of a file.
std::string readFile(std::u16string_view path);

/// A file read from front to back: `while (auto n = reader.read(buffer, size)) …`.
class FileReader {
  public:
    explicit FileReader(std::u16string_view path);
    FileReader(FileReader&& other) noexcept;
    FileReader& operator=(FileReader&& other) noexcept;
    ~FileReader();

    /// Reads up to `size` bytes, fewer only at the end of the file; 0 at the end.
    std::size_t read(char* to, std::size_t size);

  private:
    std::intptr_t handle_;
};

enum class Readable {
    /// As the host gives new files to its users.
    AsUsual,
    /// By the present user alone, from the first moment on.
    ByUserOnly,
};

struct ReplaceOptions {
    /// The attributes that the file gets in the same step; without them it keeps those that it has.
    std::optional<FileAttributes> attributes;
    /// Replaces a read-only file too (instead of 70); it stays read-only unless `attributes` says otherwise.
    bool evenReadOnly = false;
    /// Who may read a file that is made because there is none.
    Readable readable = Readable::AsUsual;
};

/// Makes `bytes` the content of a file, which is created when there is none. At every moment, also when the
/// process or the machine dies, the file has its old content whole or the new one; after a failure it is
/// unchanged and nothing is left beside it. On return the new content is on the disk.
///
/// Owner, permissions and attributes stay. Through a symbolic link the target is replaced and the link stays.
/// A file found under another spelling keeps its name. A file that is held, by another process or another
/// holder in this one, is refused (70). Where the folder allows no new file, the new one could not have the
/// old one's owner, or the file has several names (which all get the new content), it is written in place; a
/// failure then puts the old content back, and when the process dies just then the same user's next opening
/// finishes the work. A link that leads nowhere, in a folder that others may write and that only lets owners
/// delete, is refused (70) unless it is this user's or the folder owner's.
void replaceFile(std::u16string_view path, std::string_view bytes, const ReplaceOptions& options = {});

/// Creates a file with this content; 58 when anything of that name is there, a dangling link included.
void createFile(std::u16string_view path, std::string_view bytes, Readable readable = Readable::AsUsual);

/// Copies a file's content and attributes to a new file; 58 when anything of that name is there. A failure
/// leaves no part of a copy behind.
void copyFile(std::u16string_view from, std::u16string_view to, Readable readable = Readable::AsUsual);

/// Deletes a file, or a symbolic link itself and never its target. Refused (70): a folder, a read-only file,
/// a file that a living process holds (FileHold.h) or, where the host can tell, has open in any way.
void deleteFile(std::u16string_view path);

struct FolderEntry {
    /// The name without the folder.
    String name;
    /// Only Directory and Link are told; neither for a plain file, and a link is told as itself.
    FileAttributes attributes;
};

/// The entries of a folder in one pass and in the order the file system gives, without "." and "..". With an
/// `extension` (no dot, compared without regard to case) only those whose name ends in a dot and it. What is
/// neither file, folder nor link is left out. 76 when there is no such folder.
std::vector<FolderEntry> listFolder(std::u16string_view folder, std::u16string_view extension = {});

/// The same, handed over one by one until `visit` answers false.
void visitFolder(std::u16string_view folder, std::u16string_view extension,
                 const std::function<bool(FolderEntry)>& visit);

} // namespace vlgs
