// MoveMemberSCC: moves members in a provider's archive.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

class MoveMemberSCC {
  public:
    /// Moves the contents of a package when its directory moves.
    int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                           CMArgumentList &args, CMDiagnosticList &diags, bool hybrid);
};
