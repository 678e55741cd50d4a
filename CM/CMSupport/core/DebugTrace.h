// Writes the debug trace while the environment setting DEBUG_CM of section "General" is "TRUE".
#pragma once

#include "CM/platform/CString.h"

#include <initializer_list>
#include <string_view>

/// Returns whether the trace is on. Reads the setting each time, so that a host can change it while it runs.
bool isDebugTraceOn();
/// Writes "+++ " and the parts to the stream of the main CMOutputer, or to standard output without one, and
/// flushes. Does nothing while the trace is off.
void debugTrace(std::initializer_list<std::string_view> parts);
