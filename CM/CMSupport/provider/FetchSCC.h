// Fetches files from the provider's archive. All forms show what the provider answers, write no diagnostic and
// return 0.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

class FetchSCC final : public CMWorkspaceOperation {
  public:
    /// Fetches each unit once, in its own context, reloads it and updates the states of all. A null context ends
    /// the operation at once and leaves the host's callback after reloads uncalled.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    // The forms for items work in the context of CMProperty::getPvContext() and empty the argument list.

    /// Fetches each item and loads it into the model.
    int FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Fetches each item, as CCMFetchSelection::fetchOptionFlag says. The caller updates the model.
    int RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    // Fetch into the directory that the last argument names as "targetDir": the files come to their own places and
    // are then moved there. A file that can't be moved is not reported.

    /// Fetches the units in one call, in the context of the first one. The current directory becomes the parent of
    /// the target directory.
    int FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Fetches the items in one call. The current directory becomes the target directory. The argument list stays
    /// as it is if the provider failed.
    int FetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
};
