// Refuses items with names that no template can quote, before such a name reaches a shell.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

#include <initializer_list>

namespace command {

/// Returns whether a command can quote the full name, the directories and the file name of the item or unit. If
/// not, writes a line with the name and the offending character to the CM output window, and records the refusal
/// in the report.
[[nodiscard]] bool mayReachCommand(const CMArchiveItem &item, OutcomeReport &report);
[[nodiscard]] bool mayReachCommand(const IUnit &unit, OutcomeReport &report);
/// Does the same for paths that replace placeholders. The line names the first one that can't be quoted.
[[nodiscard]] bool mayReachCommand(std::initializer_list<CString> paths, OutcomeReport &report);

} // namespace command
