// The last look at the names that go into a command: what a template can't quote never reaches a shell.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

#include <initializer_list>

namespace command {

/// Whether a command may be run for the item or unit: its full name, its directories and its file name can be
/// quoted. If not, a line in the output window names the file and what it holds, and the report says so too.
[[nodiscard]] bool mayReachCommand(const CMArchiveItem &item, OutcomeReport &report);
[[nodiscard]] bool mayReachCommand(const IUnit &unit, OutcomeReport &report);
/// The same for paths that take the place of placeholders; the line names the first that can't be quoted.
[[nodiscard]] bool mayReachCommand(std::initializer_list<CString> paths, OutcomeReport &report);

} // namespace command
