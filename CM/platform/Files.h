// Works on files, directories and the current directory. Paths are UTF-8 byte strings with either separator. An
// empty path or one with a NUL names nothing. A call that fails changes nothing; lastErrorText has the reason.
#pragma once

#include "CM/platform/CString.h"

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// '/' on this system.
char pathSeparator();

/// Returns whether a file or directory of this name exists.
bool fileExists(const CString &path);
/// Returns whether the path names a regular file (links are followed).
bool isRegularFile(const CString &path);
bool isDirectory(const CString &path);
/// Returns whether the path is accessible, that is, whether its state could be read.
bool canStat(const CString &path);
/// Returns whether both paths lead to the same file or directory, in any spelling (links are followed). False if
/// one of them doesn't exist.
bool sameFile(const CString &one, const CString &other);
/// Returns whether the owner's write bit allows this process to write to the file or directory. Only the
/// permission bits count, even for root: a CM tool uses them to mark who may work on the file.
bool hasWritePermission(const CString &path);

/// Returns the first bytes of a regular file (links are followed), at most `limit`; none if it can't be opened for
/// reading or is not a regular file.
std::optional<std::string> readFile(const CString &path, std::size_t limit);
/// Copies a regular file with its permission bits and modification time. Replaces an existing target, even a
/// read-only one; if the target is a link, replaces the file that it points to. With `failIfExists`, an existing
/// target fails the call. The copy is made beside the target and renamed, so the target is complete or unchanged.
/// Fails if both are the same file.
bool copyFile(const CString &from, const CString &to, bool failIfExists);
/// Moves a file. Replaces an existing target, even a read-only one, and copies if a rename can't cross file
/// systems.
bool moveFile(const CString &from, const CString &to);
/// Removes a file, even a read-only one, but not a directory.
bool deleteFile(const CString &path);
/// Makes a file writable (adds the owner's write bit).
bool makeWritable(const CString &path);

/// Returns the current directory of the process, or an empty text if it is unknown.
CString currentDirectory();
/// Enters a directory. A '\' in the path is a separator only if nothing with the exact name exists, so that the
/// result of currentDirectory() can always be entered again.
bool setCurrentDirectory(const CString &path);
/// Returns the text of the last error of a function of this header (errno), for messages.
CString lastErrorText();

} // namespace platform
