// The answer of every provider form until this version has a provider route.
#pragma once

namespace provider {

/// Shows the message that the provider route is not part of this version, and returns 0.
int routeMissing();

} // namespace provider
