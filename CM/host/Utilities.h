// Declares free functions of the host: settings, directories, files.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

/// Reads a setting from the host's environment settings file. 1 if it exists; `second` may be null.
ORC_HOST_API int oqGetEnvVar(const CString &section, const CString &key, CString &value, CString *second);
/// The installation root, "$OQROOT". 1 on success; else `error` has the reason.
ORC_HOST_API int oqGetRoot(CString &root, CString &error);
ORC_HOST_API char oqPathSeparator();
ORC_HOST_API CString oqGetTempDir();
ORC_HOST_API CString oqGetCurrentTime();
ORC_HOST_API CString oqGetCurrentDate();
ORC_HOST_API CString oqGetCurrentUser();
/// The text of the last error of the operating system.
ORC_HOST_API CString oqGetErrorCodeString();
/// The full path of a directory, of the current one for an empty path; empty with `error` set on failure.
ORC_HOST_API CString oqGetFullPathOfDirectory(const CString &directory, CString &error);
ORC_HOST_API bool oqIsAbsolutePath(const CString &path);

ORC_HOST_API bool oqFileExist(const CString &path);
ORC_HOST_API bool oqFileExistsAndNonEmpty(const CString &path);
ORC_HOST_API bool oqFileHasWritePermission(const CString &path);
/// Seconds since 1970-01-01 UTC, or -1.
ORC_HOST_API long oqGetFileLastModifiedTime(const CString &path);
/// Deletes a file. Returns 1 on success. `flag` is always 1.
ORC_HOST_API int oqDeleteFile(const CString &path, int flag);
/// Moves a file. Flags: 1 replace an existing target, 2 allow a copy across file systems. 1 on success.
ORC_HOST_API int oqMoveFileEx(const CString &from, const CString &to, int flags);
/// Splits a path at its last separator (of either kind) and the file at its last dot; the extension has the dot.
ORC_HOST_API void ParseToDirFileNameAndExtension(const CString &path, CString &directory, CString &file,
                                                 CString &extension);

/// Turn off and on the host's translation of hardware faults into exceptions.
ORC_HOST_API void OQ_disableSE();
ORC_HOST_API void OQ_enableSE();

/// Flags of the host that the library changes during an undo of check outs: isOk2All becomes false, reloadForDupId
/// true. Their meaning is the host's (see the host guide).
extern ORC_HOST_API bool isOk2All;
extern ORC_HOST_API bool reloadForDupId;
