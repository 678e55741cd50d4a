// Turns Ctrl-C into a flag. The program never ends in the middle of its work: it ends the running tool, leaves
// files complete, and reports that the command was interrupted.
#pragma once

namespace orchard_cm {

/// Handles SIGINT, SIGTERM, SIGQUIT, and also SIGHUP unless that is ignored. The third signal ends the program at
/// once, in case it hangs.
void watchForInterrupt();
/// Returns whether the user has asked the program to end.
[[nodiscard]] bool isInterrupted();
/// Makes isInterrupted() answer `interrupted`.
void setInterrupted(bool interrupted);

} // namespace orchard_cm
