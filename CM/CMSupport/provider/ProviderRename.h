// Renames files and directories in the provider's archive: the call that moving and renaming share.
#pragma once

#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/platform/CString.h"

namespace provider {

/// Renames `from` to `to` and adds the call to the report. The caller writes the log line before the call. Returns
/// the provider's result, which is not shown.
long callRename(ProviderRun &run, void *context, CString from, CString to, OutcomeReport &report);

/// Returns what `unit` is called in the archive: the directory that it is stored as, or its file.
[[nodiscard]] CString archivedName(const IUnit &unit);

} // namespace provider
