// Says what the results of provider calls mean.
#pragma once

#include "CM/platform/CString.h"

namespace provider {

/// Returns the message of a result, in the user's words. Empty for a result that needs none (0, and the results
/// that ask the host for something) or that the API doesn't define.
[[nodiscard]] CString resultText(long result);

} // namespace provider
