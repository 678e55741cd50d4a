// From what a user calls a file of the archive to its name there.
#pragma once

#include "CM/host/IProject.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// The names of archive files, each once, in the order given. A relative name counts from the user's current
/// directory if that leads into the units directory or to a unit, else from the units directory; where the tool's
/// archive has a layout of its own (property Repository), names are taken as they stand. With `recursive`, a
/// directory stands for the files of all units below it, and a unit's file for those of the units below it as
/// well. Throws a Failure for a name that no command line can quote.
std::vector<std::string> archiveNames(const IProject &project, const std::vector<std::string> &words,
                                      bool recursive);

} // namespace orchard_cm
