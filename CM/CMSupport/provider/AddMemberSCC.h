// Puts units and directories under the provider's control.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class AddMemberSCC : public CMWorkspaceOperation {
  public:
    /// Adds each unit in a call of its own, in its own context; all in one call in the context of the project if
    /// the property "UnrollLoops" of the project is true. The first argument answers "log" with the comment; if
    /// the second answers "shouldSuppressSCCOKMessage" with "Yes", the closing message about the success is not
    /// shown. Shows what the provider answers, writes no diagnostic and ignores `hybrid`. Returns 1, also after a
    /// failure of the provider and for an empty list; 0 without a context, which ends the operation.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;
    /// Adds a directory, in the context of the project. Returns 1; 0 without a context or if the provider failed,
    /// which is shown.
    virtual int AddDirectory(CString directory, CMArgumentList &args, CMDiagnosticList &diags);
    virtual ~AddMemberSCC() = default;
};
