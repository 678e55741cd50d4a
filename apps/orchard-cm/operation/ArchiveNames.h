// Finds the archive name of a file that the user has named.
#pragma once

#include "CM/host/IProject.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// Returns the names of archive files, each once, in the order given. A relative name is taken from the current
/// directory if the result is in the units directory or is the file of a unit; otherwise it is taken from the
/// units directory. If the tool's archive has a layout of its own (property Repository), names are used unchanged.
/// With `recursive`, a directory means the files of all units below it, and a unit's file also means those of the
/// units below the unit. Throws a Failure for a name that no command line can quote.
std::vector<std::string> archiveNames(const IProject &project, const std::vector<std::string> &words,
                                      bool recursive);

} // namespace orchard_cm
