// The refresh of all units' states when a project was opened: whether it is wanted, which units it is about, and
// how the provider is asked.
#pragma once

#include "CM/CMSupport/provider/StatusProvider.h"

namespace dispatch {

/// Whether states are on display, the project works through a provider, and the tool's property
/// "RefreshCMStatusAtProjectOpenup" says "Yes", or "Ask User" and the user agrees.
[[nodiscard]] bool isStatusRefreshWanted();

/// Asks for the state of all files that are under the CM tool's care, in one query, with the context of the last
/// of them. A unit without a context ends the walk: those before it are asked for, the others keep what they have.
void refreshStatus(StatusProvider &provider);

/// The refresh, if it is wanted; otherwise the provider is not asked for anything and all states stay.
void refreshStatusIfWanted(StatusProvider &provider);

} // namespace dispatch
