// Turns Ctrl-C and similar signals into a flag, so that the program ends the running tool, leaves files complete,
// and reports the interruption, instead of ending in the middle of its work.
#pragma once

namespace orchard_cm {

/// Handles SIGINT, SIGTERM, SIGQUIT, and also SIGHUP unless that is ignored. The third signal ends the program at
/// once, in case it hangs.
void watchForInterrupt();
/// Returns whether the user has asked the program to end.
[[nodiscard]] bool isInterrupted();
/// Sets the result of isInterrupted().
void setInterrupted(bool interrupted);

} // namespace orchard_cm
