#include "providers/subversion/CheckIn.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"

namespace svnscc {

namespace {

void examine(const std::string &name, const FileState &state, bool mustBeOut, Tally &tally) {
    if (!state.isInArchive) {
        tally.failed(SCC_E_FILENOTCONTROLLED, name, "not under version control");
    } else if (state.isDirectory) {
        tally.failed(SCC_E_NOTCHECKEDOUT, name, "a directory is not checked out");
    } else if (state.isLockedElsewhere()) {
        tally.failed(SCC_E_FILEISLOCKED, name,
                     state.lockHere
                         ? "your check out was ended, and the file is now " + holderText(*state.lockInArchive)
                         : holderText(*state.lockInArchive));
    } else if (mustBeOut && !state.isCheckedOutHere()) {
        tally.failed(SCC_E_NOTCHECKEDOUT, name,
                     state.lockHere
                         ? "your check out was ended by somebody; keep a copy of your changes and check the "
                           "file out again"
                         : "not checked out");
    } else if (state.isMissing || state.isDeletedHere) {
        tally.failed(SCC_E_FILENOTEXIST, name, "the local file is missing");
    } else if (state.isConflicted) {
        tally.failed(SCC_E_FIXMERGE, name, "in conflict with the repository; resolve it with \"svn resolve\"");
    }
}

SCCRTN commitAll(Client &client, const Names &names, const std::string &comment, bool keep, bool mustBeOut) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    Names changed;
    Names unchanged;
    for (std::size_t i = 0; i < names.size(); ++i) {
        examine(names[i], states[i], mustBeOut, tally);
        if (states[i].isModified) {
            changed.push_back(names[i]);
        } else if (states[i].isCheckedOutHere()) {
            unchanged.push_back(names[i]);
        }
    }
    if (tally.result() != SCC_OK) {
        client.output().error("Nothing was checked in.");
        return tally.result();
    }
    client.stopIfCancelled();
    if (!changed.empty()) {
        client.commit(changed, comment, svn_depth_empty, keep);
        client.finish();
    }
    if (!keep) {
        // A commit doesn't release the locks of files that have not changed.
        unlockFiles(client, unchanged, tally);
        if (!unchanged.empty()) {
            check(svn_client_remove_from_changelists(client.list(unchanged), svn_depth_empty, nullptr,
                                                     client.get(), client.pool()));
        }
        for (const std::string &name : changed) {
            makeReadOnly(client, name);
        }
    }
    return tally.result();
}

} // namespace

SCCRTN checkIn(Client &client, const Names &names, const std::string &comment, bool keep) {
    return commitAll(client, names, comment, keep, true);
}

SCCRTN checkInAnyway(Client &client, const Names &names, const std::string &comment) {
    return commitAll(client, names, comment, false, false);
}

} // namespace svnscc
