// CMDeleteMember: deletes in the archive what is deleted in the model: units, or a directory.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class CMDeleteMember final : public CMWorkspaceOperation {
  public:
    /// A subsystem with a directory of its own goes with its directory, where the tool has a template for that.
    /// Returns the outcome of the last unit that was worked on.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Deletes a directory. 0 without a tool, a template or an installation root; else what the run gave.
    virtual int deleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags,
                                bool hybrid);
};
