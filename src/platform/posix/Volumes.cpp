// SPDX-License-Identifier: MIT
#include "platform/Volumes.h"

#include "base/Error.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/UserFolders.h"

#include <cerrno>
#include <climits>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace vlgs {

namespace posix {

namespace {

/// What `setCurrentFolder` was given last on this thread: it counts as long as it names the current folder.
thread_local std::optional<FullName> chosenFolder;

bool isFolder(const std::string& path, struct stat& status) {
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool namesCurrentFolder(const FullName& name) {
    struct stat named;
    struct stat current;
    try {
        return isFolder(hostPath(name.text), named) && isFolder(".", current) && isSameFile(named, current);
    } catch (const Error&) {
        // The table of volumes is another one by now.
        return false;
    }
}

std::string workingFolder() {
    std::string path(PATH_MAX, '\0');
    while (!::getcwd(path.data(), path.size())) {
        if (errno != ERANGE)
            raise(RunTimeError::PathNotFound);
        path.resize(path.size() * 2);
    }
    path.resize(path.find('\0'));
    return path;
}

} // namespace

FullName currentFolderName() {
    if (chosenFolder && namesCurrentFolder(*chosenFolder))
        return *chosenFolder;
    return volumeName(workingFolder());
}

} // namespace posix

namespace {

using namespace posix;

String textOf(const std::optional<FullName>& name) {
    return name ? String(name->text) : String();
}

/// The volume of a root with or without its final backslash.
const Volume* volumeOfRoot(std::u16string_view root) {
    if (root.ends_with(u'\\'))
        root.remove_suffix(1);
    if (root.starts_with(u"\\\\"))
        return findShare(root);
    return root.size() == 2 && root[1] == u':' ? findVolume(root[0]) : nullptr;
}

} // namespace

DriveType driveType(std::u16string_view root) {
    const auto* volume = volumeOfRoot(root);
    if (!volume)
        return DriveType::NoRootFolder;
    if (!volume->share.empty())
        return DriveType::Remote;
    struct stat status;
    return isFolder(volume->folder + "/", status) ? DriveType::Fixed : DriveType::NoRootFolder;
}

String mappedShare(std::u16string_view drive) {
    const auto* volume = drive.size() == 2 && drive[1] == u':' ? findVolume(drive[0]) : nullptr;
    return volume ? volume->share : String();
}

String currentFolder() {
    return currentFolderName().text;
}

bool setCurrentFolder(std::u16string_view folder) {
    try {
        auto name = fullName(folder);
        if (!name || ::chdir(hostPath(name->text).c_str()) != 0)
            return false;
        if (name->text.size() > name->root + 1 && name->text.back() == u'\\')
            name->text.pop_back();
        chosenFolder = std::move(name);
        return true;
    } catch (const Error&) {
        return false;
    }
}

String fullPath(std::u16string_view path) {
    return textOf(fullName(path));
}

String fullPath(std::u16string_view path, std::u16string_view folder) {
    const auto base = fullName(folder);
    return base ? textOf(fullName(path, *base)) : String();
}

String libraryPath(std::u16string_view path) {
    if (!path.starts_with(u'/') || path.starts_with(u"//"))
        return path;
    const auto name = fullPath(path);
    return name.empty() ? String(path) : name;
}

String temporaryFolder() {
    const auto folder = trustedVariable("TMPDIR").value_or("");
    const auto name = fullName(libraryName(folder.empty() ? "/tmp" : folder));
    return name && name->text.back() != u'\\' ? concat(name->text, u"\\") : textOf(name);
}

String systemFolder() {
    return u"C:\\usr\\lib";
}

String windowsFolder() {
    return u"C:\\usr";
}

} // namespace vlgs
