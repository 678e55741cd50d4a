// DeleteMemberSCC: deletes members of a provider's archive.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/platform/CString.h"

class DeleteMemberSCC {
  public:
    int DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);
};
