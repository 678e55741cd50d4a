// Interrupt: Ctrl-C as a flag. The program never ends in the middle of its work: the tool that runs is ended,
// files are left whole, and the command says that it was interrupted.
#pragma once

namespace orchard_cm {

/// Takes over SIGINT, SIGTERM, SIGQUIT, and SIGHUP unless it is ignored. A third one ends the program at once,
/// should it hang.
void watchForInterrupt();
/// Whether the user has asked for the end.
[[nodiscard]] bool isInterrupted();
/// Makes isInterrupted() answer `interrupted`.
void setInterrupted(bool interrupted);

} // namespace orchard_cm
