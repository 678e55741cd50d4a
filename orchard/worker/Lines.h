// Splits the output of a child into lines.
#pragma once

#include "CM/platform/CStringList.h"

#include <string>

namespace orchard {

/// Appends the lines of `text`, each with its line end; the last line may have none. Bytes are unchanged. A text
/// of more than 256 KiB becomes one entry, since an entry for each line would take several times the memory. Test:
/// Lines.ALongTextIsOneEntryAsItIs.
void appendLines(std::string text, CStringList &lines);

} // namespace orchard
