// Supplies the template variables about the archive.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMArchive : public CMPropertyArgument {
  public:
    /// An empty string means the project's main archive.
    explicit CMArchive(CString archive) : archive_(std::move(archive)) {}

    /// Returns non-zero for the names "archive" and "archivedirectory".
    [[nodiscard]] int isNamed(const CString &name) const override;
    /// For "archivedirectory" returns the archive if it is a directory, or the directory that contains it if it is
    /// a file (empty for a bare file name). Returns an inaccessible archive unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

    /// Returns how archives are chosen: 0 by directory, 1 by file, 2 one archive for the project. For 0 and 1, the
    /// caller looks up the archive of each unit and makes it the main archive.
    [[nodiscard]] static int getArchiveSelection();
    /// Returns the project's archive with predefined variables expanded; empty without a project or the property.
    [[nodiscard]] static CString getMainArchive();
    /// Returns 1 on success; 0 without an open project, or if the property is unknown.
    static int setMainArchive(const CString &value);

  private:
    CString archive_;
};
