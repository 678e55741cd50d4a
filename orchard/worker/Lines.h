// Cutting what a child wrote into lines.
#pragma once

#include "CM/platform/CStringList.h"

#include <string_view>

namespace orchard {

/// Appends the lines of `text`, each with its line end ("\n", and what stands before it); the last one may have
/// none. Bytes stay as they are.
void appendLines(std::string_view text, CStringList &lines);

} // namespace orchard
