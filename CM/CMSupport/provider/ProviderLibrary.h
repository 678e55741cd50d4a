// Loads the provider's library and finds out whether it can be used.
#pragma once

#include "CM/CMSupport/core/OutcomeReport.h"

namespace provider {

/// Loads the library that the registry names. A failure is not shown: all calls of the provider then do nothing
/// and count as successes, as required.
void loadLibrary();

/// Makes the item failed if no library is loaded, or one that is not a provider's; the reason names the library,
/// its registry key and what to do.
void reportLibrary(OutcomeReport &report);

} // namespace provider
