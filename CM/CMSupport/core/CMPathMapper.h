// Maps workspace paths to archive paths and back, for tools whose archive layout is described by the property
// "Repository".
#pragma once

#include "CM/platform/CString.h"

class CMPathMapper {
  public:
    CMPathMapper() = delete;

    /// Returns the part of a local path below the working directory, without separators at its ends. If the path
    /// doesn't contain the working directory, returns the complete path, without blanks at its ends.
    [[nodiscard]] static CString getArchiveSubDirFromLocalPath(const CString &path);
    /// Returns the archive path that the template "Repository" yields for a local path. Without a template, or
    /// with one that contains "$ArchivePath", returns the path itself.
    [[nodiscard]] static CString getArchivePathFromLocalPath(const CString &path);
    /// Returns the local path for an archive path; for a path outside the archive, the working directory and a
    /// separator. Without a template, or with one that contains "$ArchivePath", returns the path itself, without
    /// blanks at its ends.
    [[nodiscard]] static CString getLocalPathFromArchivePath(const CString &path);

    /// Expands the property "Repository" with the main archive as its only argument; empty without the property.
    /// Variables that are filled in later stay in the text.
    [[nodiscard]] static CString expandedRepository();
    /// Returns whether an expanded "Repository" is a layout to map with: not empty and without "$ArchivePath".
    [[nodiscard]] static bool isLayout(const CString &repository);
};
