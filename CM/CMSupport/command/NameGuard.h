// Refuses items with names that no template can quote, before such a name reaches a shell.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

#include <vector>

namespace command {

using Names = std::vector<CString>;

/// Returns whether the item or unit may reach a command: its full name, directories and file name can be quoted,
/// so can the names `beside` that reach the same command, and no template could take all of them together for a
/// conditional. If not, writes a line with the name and the reason to the CM output window, and records the
/// refusal in the report.
[[nodiscard]] bool mayReachCommand(const CMArchiveItem &item, const Names &beside, OutcomeReport &report);
[[nodiscard]] bool mayReachCommand(const IUnit &unit, const Names &beside, OutcomeReport &report);
/// Does the same for paths that replace placeholders. The line names the first one that can't be quoted.
[[nodiscard]] bool mayReachCommand(const Names &paths, OutcomeReport &report);

/// Does the same for the archive and the target directory of a command that concerns no item.
[[nodiscard]] bool mayReachCommand(CMArgumentList &args, OutcomeReport &report);

/// Returns the archive and the target directory, if the list has such arguments, with their variables expanded.
[[nodiscard]] Names namesIn(CMArgumentList &args);

} // namespace command
