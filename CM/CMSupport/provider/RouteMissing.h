// Implements the provider forms of operations that this version does not support.
#pragma once

namespace provider {

/// Tells the user that this version does not support the operation, reports the outcome noTool, and returns 0.
int routeMissing();

} // namespace provider
