// The host's CM window, which in a program without windows is a stream.
#pragma once

#include "orchard/OrchardApi.h"

#include <functional>
#include <ostream>

namespace orchard {

/// The stream that stands for the CM output window; null for none, and then no CM manager exists. It must live
/// until it is replaced. `onClear`, which may be empty, is called when the window is to be emptied.
ORCHARD_API void setCMOutputStream(std::ostream *stream, std::function<void()> onClear = {});

/// Whether the library has asked for the window to be shown since the stream was set.
ORCHARD_API bool isCMOutputShown();

} // namespace orchard
