#include "providers/subversion/NewestVersion.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/KeptCopy.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/Paths.h"

#include <filesystem>

namespace svnscc {

namespace {

/// Whether there is local work in the place of a file that an update would overwrite, or would stumble over.
bool isInTheWay(const std::string &name, const FileState &state) {
    if (state.isDirectory || state.isCheckedOutHere() || !exists(name)) {
        return false;
    }
    return state.isModified || state.isConflicted || state.isNewInArchive;
}

bool needsUpdate(const FileState &state) {
    return state.isOutOfDate || state.isMissing || state.isNewInArchive || state.isDeletedHere;
}

} // namespace

void bringToNewest(Client &client, const Names &names, const std::vector<FileState> &states) {
    Names reverted;
    Names updated;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const FileState &state = states[i];
        if (isInTheWay(names[i], state)) {
            client.stopIfCancelled();
            client.output().warning(names[i] + ": your changes are kept in " + baseName(keepCopy(names[i])));
            if (state.isNewInArchive) {
                std::filesystem::remove(names[i]);
            }
        }
        const bool isOverwritten = state.isModified && !state.isCheckedOutHere();
        if (!state.isNewInArchive && !state.isDirectory && (isOverwritten || state.isConflicted)) {
            reverted.push_back(names[i]);
        }
        if (needsUpdate(state)) {
            updated.push_back(names[i]);
        }
    }
    if (!reverted.empty()) {
        check(svn_client_revert4(client.list(reverted), svn_depth_empty, nullptr, FALSE, FALSE, TRUE, client.get(),
                                 client.pool()));
    }
    if (!updated.empty()) {
        const svn_opt_revision_t head = newest();
        check(svn_client_update4(nullptr, client.list(updated), &head, svn_depth_unknown, FALSE, TRUE, FALSE, TRUE,
                                 TRUE, client.get(), client.pool()));
    }
}

} // namespace svnscc
