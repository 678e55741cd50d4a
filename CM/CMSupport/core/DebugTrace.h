// The debug trace: written only while the environment setting DEBUG_CM of section "General" is "TRUE".
#pragma once

#include "CM/platform/CString.h"

#include <initializer_list>
#include <string_view>

/// Whether the trace is on. Asked anew each time, so that a host may switch it while it runs.
bool isDebugTraceOn();
/// Writes "+++ " and the parts to the stream of the main CMOutputer, or to standard output without one, and
/// flushes. Does nothing while the trace is off.
void debugTrace(std::initializer_list<std::string_view> parts);
