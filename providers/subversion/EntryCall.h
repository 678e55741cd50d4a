// Runs the body of an entry: whatever goes wrong becomes a result and a text for the user.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/Context.h"

#include "CM/scc/scc.h"

#include <functional>

namespace svnscc {

/// Creates a context for a host; it is known until releaseContext(). Reports a failure on standard error, since
/// there is no other way to the user yet, and returns null then.
Context *createContext() noexcept;
/// Ends a context. Does nothing for one that is not known.
void releaseContext(void *context) noexcept;

/// Runs `work` with the context, and returns its result. A context that is not known, which a host may have ended
/// already, gives SCC_E_NONSPECIFICERROR. Nothing is thrown.
using ContextWork = std::function<SCCRTN(Context &context)>;
SCCRTN runWithContext(void *context, const ContextWork &work) noexcept;

/// The same with a client, for work on the open project; SCC_E_PROJNOTOPEN without one. The user may cancel the
/// work.
using ProjectWork = std::function<SCCRTN(Client &client)>;
SCCRTN runInProject(void *context, const ProjectWork &work) noexcept;

/// The same for files. No files are a success.
using FilesWork = std::function<SCCRTN(Client &client, const Names &names)>;
SCCRTN runWithFiles(void *context, long count, char **files, const FilesWork &work) noexcept;

/// The names of a host's list. Throws Failure for a list or a name that can't be.
Names namesFrom(long count, char **files);

} // namespace svnscc
