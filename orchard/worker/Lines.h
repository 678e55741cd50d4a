// Cutting what a child wrote into lines.
#pragma once

#include "CM/platform/CStringList.h"

#include <string_view>

namespace orchard {

/// Appends the lines of `text`, each with its line end ("\n", and what stands before it); the last one may have
/// none. Bytes stay as they are. Of a text of more than 256 KiB an entry holds as many whole lines as make 64 KiB:
/// an entry for each line would take several times the memory of the text.
void appendLines(std::string_view text, CStringList &lines);

} // namespace orchard
