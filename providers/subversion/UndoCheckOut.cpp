#include "providers/subversion/UndoCheckOut.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"

#include <string>
#include <unordered_set>

namespace svnscc {

namespace {

void revert(Client &client, const Names &names) {
    if (!names.empty()) {
        check(svn_client_revert4(client.list(names), svn_depth_empty, nullptr, FALSE, FALSE, TRUE, client.get(),
                                 client.pool()));
    }
}

void leaveTasks(Client &client, const Names &names) {
    if (!names.empty()) {
        check(svn_client_remove_from_changelists(client.list(names), svn_depth_empty, nullptr, client.get(),
                                                 client.pool()));
    }
}

} // namespace

SCCRTN undoCheckOut(Client &client, const Names &names) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    Names out;
    Names missing;
    Names lost; // somebody else has ended the check out
    std::unordered_set<std::string> changed;
    std::unordered_set<std::string> inTask;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!states[i].isInArchive) {
            tally.failed(SCC_E_FILENOTCONTROLLED, names[i], "not under version control");
        } else if (!states[i].lockHere) {
            tally.failed(SCC_E_NOTCHECKEDOUT, names[i], "not checked out here");
        } else {
            (states[i].isCheckedOutHere() ? out : lost).push_back(names[i]);
            if (states[i].isMissing) {
                missing.push_back(names[i]);
            }
            if (states[i].isModified || states[i].isConflicted) {
                changed.insert(names[i]);
            }
            if (!states[i].changelist.empty()) {
                inTask.insert(names[i]);
            }
        }
    }
    client.stopIfCancelled();
    revert(client, missing); // Subversion can't release the lock of a file that isn't on disk
    // The request is before the other files: if the repository can't be reached, nothing has been lost yet.
    Names given = unlockFiles(client, out, tally);
    forgetLocks(client, lost);
    given.insert(given.end(), lost.begin(), lost.end());
    client.finish();
    Names reverted; // to ask this of an unchanged file costs as much as of a changed one
    Names leaving;
    for (const std::string &name : given) {
        if (changed.contains(name)) {
            reverted.push_back(name);
        }
        if (inTask.contains(name)) {
            leaving.push_back(name);
        }
    }
    revert(client, reverted);
    leaveTasks(client, leaving);
    for (const std::string &name : given) {
        makeReadOnly(client, name);
    }
    return tally.result();
}

} // namespace svnscc
