// Cutting what a child wrote into lines.
#pragma once

#include "CM/platform/CStringList.h"

#include <string>

namespace orchard {

/// Appends the lines of `text`, each with its line end ("\n", and what stands before it); the last one may have
/// none. Bytes stay as they are. A text of more than 256 KiB becomes one entry as it is: an entry for each line
/// would take several times its memory.
void appendLines(std::string text, CStringList &lines);

} // namespace orchard
