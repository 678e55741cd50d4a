// Reports why a file was not read into the model, or what was unusual about one that was.
#pragma once

#include "orchard/storage/Problem.h"

namespace orchard {

/// Shows one message for all problems of a reload: the first completely, the others in the log.
void reportReloadProblems(const Problems &problems);
/// Does the same for warnings about a file that was read. While isOk2All is set, only logs them.
void reportReloadWarnings(const Problems &warnings);

} // namespace orchard
