// Deletes from the archive what is deleted from the model: units, or a directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMDeleteMember final : public CMWorkspaceOperation {
  public:
    /// Deletes each unit; a subsystem with its own directory is deleted together with it if the tool has a
    /// template for that. Returns 0 without a tool (after appending one diagnostic) and if the name of any unit
    /// can't be quoted (the other units are deleted all the same), otherwise CommandRun::result().
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Deletes a directory. In the template only $OQROOT and $UnitDirPath are replaced, and `args` is not used.
    /// Returns the result of runLogged(), or 0 without a tool (after appending one diagnostic), without a template
    /// or an installation root, and for a directory that no command can quote.
    virtual int deleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags,
                                bool hybrid);
};
