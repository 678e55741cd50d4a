// CMPathMapper: turns a place in the workspace into one in the archive and back, for tools whose archive layout is
// described by the property "Repository".
#pragma once

#include "CM/platform/CString.h"

class CMPathMapper {
  public:
    CMPathMapper() = delete;

    /// The part of a local path below the working directory, without separators at its ends; a path that doesn't
    /// hold the working directory comes back trimmed.
    [[nodiscard]] static CString getArchiveSubDirFromLocalPath(const CString &path);
    /// The archive path that the template "Repository" gives for a local path. Without a template, or with one
    /// that holds "$ArchivePath", the path itself.
    [[nodiscard]] static CString getArchivePathFromLocalPath(const CString &path);
    /// The local path for an archive path; one that lies outside of the archive gives the working directory and a
    /// separator. Without a template, or with one that holds "$ArchivePath", the path itself, trimmed.
    [[nodiscard]] static CString getLocalPathFromArchivePath(const CString &path);

    /// The property "Repository" expanded with the main archive as its one argument; empty without one. Variables
    /// that are filled in later stay in the text.
    [[nodiscard]] static CString expandedRepository();
    /// Whether an expanded "Repository" is a layout to map with.
    [[nodiscard]] static bool isLayout(const CString &repository);
};
