// Finds the name in the archive of a file that the user names.
#pragma once

#include "CM/host/IProject.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// Returns the names of archive files, each once, in the order given. A relative name is relative to the user's
/// current directory if that leads into the units directory or to a unit, otherwise to the units directory. If the
/// tool's archive has a layout of its own (property Repository), names are used unchanged. With `recursive`, a
/// directory means the files of all units below it, and a unit's file also means those of the units below the
/// unit. Throws a Failure for a name that no command line can quote.
std::vector<std::string> archiveNames(const IProject &project, const std::vector<std::string> &words,
                                      bool recursive);

} // namespace orchard_cm
