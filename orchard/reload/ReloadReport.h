// Telling the user why a file did not come into the model.
#pragma once

#include "orchard/storage/Problem.h"

namespace orchard {

/// One message for all problems of one reload: the first in full, the others in the log.
void reportReloadProblems(const Problems &problems);

} // namespace orchard
