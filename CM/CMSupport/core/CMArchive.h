// CMArchive: the argument that answers the variables about the archive.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMArchive : public CMPropertyArgument {
  public:
    /// An empty text means the project's main archive.
    explicit CMArchive(CString archive) : archive_(std::move(archive)) {}

    /// The names are archive and archivedirectory.
    [[nodiscard]] int isNamed(const CString &name) const override;
    /// "archivedirectory" gives a directory whether the archive is one or a file in it (the empty text for a file
    /// named without its directory); an archive that can't be reached is given as it stands.
    [[nodiscard]] CString substitute(const CString &name) override;

    /// How archives are chosen: 0 by directory, 1 by file (the caller then looks up the archive of each unit and
    /// makes it the main archive), 2 one archive for the project.
    [[nodiscard]] static int getArchiveSelection();
    /// The project's archive with predefined variables expanded; empty without a project or the property.
    [[nodiscard]] static CString getMainArchive();
    /// 1 on success; 0 without an open project, or where the property is unknown.
    static int setMainArchive(const CString &value);

  private:
    CString archive_;
};
