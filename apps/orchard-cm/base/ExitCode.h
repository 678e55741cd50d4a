// What the program ends with. Scripts rely on these numbers: they stand in the man page.
#pragma once

namespace orchard_cm {

enum class ExitCode : int {
    done = 0,
    failed = 1,        ///< the operation failed, or did not reach every unit it was asked for
    usage = 2,         ///< the command line, or a line of a batch, can't be understood
    projectUnread = 3, ///< there is no project, or it can't be read
    interrupted = 130, ///< ended by Ctrl-C, as a shell reports it
};

} // namespace orchard_cm
