// Files, directories and the current directory. Paths are UTF-8 byte strings and may use either separator. A path
// that is empty or holds a NUL names nothing. A call that fails changes nothing, and lastErrorText tells why.
#pragma once

#include "CM/platform/CString.h"

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// '/' here.
char pathSeparator();

/// Whether a file or directory of this name exists.
bool fileExists(const CString &path);
/// Whether the path names a regular file (a link is followed).
bool isRegularFile(const CString &path);
bool isDirectory(const CString &path);
/// Whether the path can be reached at all, that is whether its state could be asked.
bool canStat(const CString &path);
/// Whether both paths lead to the same file or directory, however they are spelt (links are followed). False if
/// one of them leads nowhere.
bool sameFile(const CString &one, const CString &other);
/// Whether the owner's write bit allows this process to write to the file or directory. The permission bits
/// decide, also for a user whom they don't bind: a CM tool says with them who may work on the file.
bool hasWritePermission(const CString &path);

/// The first bytes of a regular file (a link is followed), at most `limit` of them. Nothing if it can't be opened
/// for reading, or is no regular file.
std::optional<std::string> readFile(const CString &path, std::size_t limit);
/// Copies a regular file with its permission bits and the time of its last change. An existing target is replaced,
/// also a read-only one; where it is a link, the file behind it. With `failIfExists` it makes the call fail.
/// The target is complete or as it was: the copy is made beside it and renamed. A file isn't copied onto itself.
bool copyFile(const CString &from, const CString &to, bool failIfExists);
/// Moves a file: replaces an existing target, also a read-only one, and copies where a rename can't cross file
/// systems.
bool moveFile(const CString &from, const CString &to);
/// Removes a file, also a read-only one, but no directory.
bool deleteFile(const CString &path);
/// Takes a file's read-only state away (adds the owner's write bit).
bool makeWritable(const CString &path);

/// The process's current directory, or the empty text if it can't be told.
CString currentDirectory();
/// Enters a directory. A '\' in the path separates only if there is nothing of this very name, so that what
/// currentDirectory gave leads back.
bool setCurrentDirectory(const CString &path);
/// The text of the last error of a call of this header (errno), for messages.
CString lastErrorText();

} // namespace platform
