// Links the active project to an archive with the command tool. The output of the tool's connect command contains
// the path of the archive.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMConnectToCMRepository final : public CMArchiveOperation {
  public:
    using CMArchiveOperation::operator(); // the form with archive items returns 0

    /// Saves the model, runs the tool's connect command, replaces $ArchivePath in the tool's properties
    /// "Repository" and "ArchiveRoot" of the active project with the path that the command printed, and runs the
    /// tool's command PostConnectToCMRepository. `units` only selects the archive. A path that no command can
    /// quote is not written; the CM output window says so. Returns 1 if both commands could be expanded and run,
    /// otherwise 0. If only the second one could not, the properties have been written. Without a tool, appends
    /// one diagnostic and returns 0.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
