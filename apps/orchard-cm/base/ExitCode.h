// Defines the exit statuses of the program. Scripts rely on these numbers, which the man page lists.
#pragma once

namespace orchard_cm {

enum class ExitCode : int {
    done = 0,
    failed = 1,        ///< the command failed, or a requested unit is not in the requested state
    usage = 2,         ///< the command line or a batch line is invalid, or no project was named or found
    projectUnread = 3, ///< the named or found project can't be read
    interrupted = 130, ///< ended by Ctrl-C or by TERM, HUP or QUIT; a shell reports Ctrl-C like this
};

} // namespace orchard_cm
