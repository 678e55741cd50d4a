// Telling the user why a file did not come into the model, or what was odd about one that did.
#pragma once

#include "orchard/storage/Problem.h"

namespace orchard {

/// One message for all problems of one reload: the first in full, the others in the log.
void reportReloadProblems(const Problems &problems);
/// The same for what the user should know of a file that was read; only in the log while isOk2All is set.
void reportReloadWarnings(const Problems &warnings);

} // namespace orchard
