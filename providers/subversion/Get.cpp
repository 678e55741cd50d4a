#include "providers/subversion/Get.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/NewestVersion.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"

#include <unordered_set>

namespace svnscc {

namespace {

/// Gets what can be got, and reports the rest to `tally`.
void get(Client &client, const Names &names, const std::vector<FileState> &states, Tally &tally) {
    Names taken;
    std::vector<FileState> takenStates;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const FileState &state = states[i];
        if (!state.isInArchive && !state.isNewInArchive) {
            tally.failed(SCC_E_FILENOTCONTROLLED, names[i], "not under version control");
        } else if (state.isDeletedInArchive) {
            tally.failed(SCC_E_FILENOTCONTROLLED, names[i], "deleted in the repository");
        } else if (state.isCheckedOutHere() && !state.isMissing) {
            tally.failed(SCC_E_FILEISCHECKEDOUT, names[i], "checked out; check it in or undo the check out first");
        } else {
            taken.push_back(names[i]);
            takenStates.push_back(state);
        }
    }
    client.stopIfCancelled();
    bringToNewest(client, taken, takenStates);
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (!takenStates[i].isDirectory && !takenStates[i].isCheckedOutHere()) {
            makeReadOnly(client, taken[i]);
        }
    }
}

} // namespace

SCCRTN getFiles(Client &client, const Names &names) {
    Tally tally(client.output());
    get(client, names, statesOf(client, names), tally);
    return tally.result();
}

SCCRTN getDirectories(Client &client, const Names &directories, bool isRecursive) {
    Tally tally(client.output());
    Names names;
    std::vector<FileState> states;
    std::unordered_set<std::string> seen;
    for (const std::string &directory : directories) {
        if (!isWithin(client.project().root, directory)) {
            tally.failed(SCC_E_FILENOTCONTROLLED, directory, "not in the working copy of the project");
            continue;
        }
        walk(client, directory, isRecursive ? svn_depth_infinity : svn_depth_files,
             [&](const std::string &path, const svn_client_status_t &status) {
                 FileState state = stateFrom(status);
                 const bool isWanted = (state.isInArchive || state.isNewInArchive) && !state.isDirectory &&
                                       !state.isDeletedInArchive && !state.isCheckedOutHere();
                 if (isWanted && seen.insert(path).second) {
                     names.push_back(path);
                     states.push_back(std::move(state));
                 }
             });
    }
    get(client, names, states, tally);
    return tally.result();
}

} // namespace svnscc
