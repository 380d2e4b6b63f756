// SPDX-License-Identifier: MIT
// New content in a file that must stay the same file: because its folder takes no other, because a new one
// could not have its owner, or because it has further names.
//
// Before the first byte is written, a recovery copy of the old content and the new one lies whole in the
// user's own folder (UserFolders.h). When a process dies meanwhile, whoever of the same user opens the file
// next finishes the work. A user who has no such folder writes without this safety.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace vlgs::posix {

/// Makes `bytes` the content of a file that is open for reading and writing and claimed by the caller, and
/// puts it on the disk. After a failure the old content is back. 0, or the value of errno.
int overwriteInPlace(int file, std::string_view bytes);

/// Whether a process of this user is writing a file in this way, or has died at it.
bool isUnfinished(const struct stat& file);

/// Finishes what a process that is gone has begun with a file. Waits for one that is still at work; when
/// others claim the file, or it may not be written, it is left as it is. The file is open in any way, and not
/// claimed by the caller.
void finishOverwriting(int file, const std::string& path);

/// The same for a caller who has claimed the file alone.
void finishOverwritingClaimed(int file, const std::string& path);

} // namespace vlgs::posix
