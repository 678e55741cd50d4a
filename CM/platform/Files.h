// Files, directories and the current directory. Paths are UTF-8 byte strings and may use either separator.
#pragma once

#include "CM/platform/CString.h"

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
/// Whether the owner's write bit allows this process to write to the file or directory. The permission bits
/// decide, also for a user whom they don't bind: a CM tool says with them who may work on the file.
bool hasWritePermission(const CString &path);

/// Copies a file with its permission bits. With `failIfExists` an existing target makes it fail.
/// The target is complete or absent: the copy is made beside it and renamed.
bool copyFile(const CString &from, const CString &to, bool failIfExists);
/// Moves a file: replaces an existing target, and copies where a rename can't cross file systems.
bool moveFile(const CString &from, const CString &to);
bool deleteFile(const CString &path);
/// Takes a file's read-only state away (adds the owner's write bit).
bool makeWritable(const CString &path);

/// The process's current directory, or the empty text if it can't be told.
CString currentDirectory();
bool setCurrentDirectory(const CString &path);
/// The text of the last error of a call of this header (errno), for messages.
CString lastErrorText();

} // namespace platform
