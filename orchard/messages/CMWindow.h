// Provides the host's CM output window; in a program without windows it is a stream.
#pragma once

#include "orchard/OrchardApi.h"

#include <functional>
#include <ostream>

namespace orchard {

/// Sets the stream that serves as the CM output window; with null there is none, and no CM manager exists. The
/// stream must exist until it is replaced. `onClear`, which may be empty, is called when the window is to be
/// cleared.
ORCHARD_API void setCMOutputStream(std::ostream *stream, std::function<void()> onClear = {});

/// Returns whether the library has asked to show the window since the stream was set.
ORCHARD_API bool isCMOutputShown();

} // namespace orchard
