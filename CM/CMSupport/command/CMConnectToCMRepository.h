// Links the active project to an archive with the command tool. The output of the tool's connect command contains
// the path of the archive.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMConnectToCMRepository final : public CMArchiveOperation {
  public:
    using CMArchiveOperation::operator(); // the form with archive items returns 0

    /// Saves the model, runs the tool's connect command, replaces $ArchivePath in the tool's properties
    /// "Repository" and "ArchiveRoot" of the active project by the path that the command printed, and runs the
    /// command for the time after connecting. `units` only select the archive. A path that no command can quote is
    /// not written; the CM output window says so. Returns 1 if both commands were made and run, else 0; the
    /// properties are written even if only the second could not. Without a tool returns 0 and makes one
    /// diagnostic.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
