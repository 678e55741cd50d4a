// CMConnectToCMRepository: links the active project to an archive with the command tool. Where the archive lies is
// read from what the tool's connect command prints.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMConnectToCMRepository final : public CMArchiveOperation {
  public:
    using CMArchiveOperation::operator(); // the form on archive items gives 0

    /// `units` serve only to choose the archive. Puts the path in the place of $ArchivePath in the tool's
    /// properties "Repository" and "ArchiveRoot" of the active project. Returns 0 if one of the two commands could
    /// not be made or run; the properties are written all the same if that is the second.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
