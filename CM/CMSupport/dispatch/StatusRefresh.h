// Refreshes the states of all units after a project was opened.
#pragma once

#include "CM/CMSupport/provider/StatusProvider.h"

namespace dispatch {

/// Returns whether states are displayed, the project works through a provider, and the tool's property
/// "RefreshCMStatusAtProjectOpenup" is "Yes", or is "Ask User" and the user agrees.
[[nodiscard]] bool isStatusRefreshWanted();

/// Asks the provider for the states of all files that the CM tool manages, in one query with the context of the
/// last unit. The first unit without a context ends the walk: it and the units after it keep their states.
void refreshStatus(StatusProvider &provider);

/// Refreshes the states if that is wanted; otherwise does not call the provider.
void refreshStatusIfWanted(StatusProvider &provider);

} // namespace dispatch
