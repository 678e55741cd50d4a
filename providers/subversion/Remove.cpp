#include "providers/subversion/Remove.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"

namespace svnscc {

namespace {

/// A directory can be removed only if all of it has the newest version. What somebody else has checked out below
/// it is refused by the repository.
void updateDirectories(Client &client, const Names &directories) {
    if (!directories.empty()) {
        const svn_opt_revision_t head = newest();
        check(svn_client_update4(nullptr, client.list(directories), &head, svn_depth_unknown, FALSE, TRUE, FALSE,
                                 TRUE, FALSE, client.get(), client.pool()));
    }
}

} // namespace

SCCRTN removeFiles(Client &client, const Names &names, const std::string &comment) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    Names directories;
    Names missing; // from this working copy
    for (std::size_t i = 0; i < names.size(); ++i) {
        const FileState &state = states[i];
        if ((!state.isInArchive && !state.isNewInArchive) || state.isDeletedInArchive) {
            tally.failed(SCC_E_FILENOTCONTROLLED, names[i], "not under version control");
        } else if (state.isLockedElsewhere()) {
            tally.failed(SCC_E_FILEISCHECKEDOUT, names[i], holderText(*state.lockInArchive));
        } else if (state.isDirectory) {
            directories.push_back(names[i]);
        } else if (state.isNewInArchive) {
            missing.push_back(names[i]);
        }
    }
    if (tally.result() != SCC_OK) {
        client.output().error("Nothing was removed.");
        return tally.result();
    }
    client.stopIfCancelled();
    updateDirectories(client, directories);
    updateDirectories(client, missing);
    check(svn_client_delete4(client.list(names), TRUE, TRUE, nullptr, nullptr, nullptr, client.get(),
                             client.pool()));
    try {
        client.commit(names, comment, svn_depth_infinity, false);
    } catch (...) {
        client.finish();
        svn_error_clear(svn_client_revert4(client.list(names), svn_depth_infinity, nullptr, FALSE, TRUE, TRUE,
                                           client.get(), client.pool()));
        throw;
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!states[i].isDirectory) {
            makeWritable(client, names[i]);
        }
    }
    return tally.result();
}

} // namespace svnscc
