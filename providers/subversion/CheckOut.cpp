#include "providers/subversion/CheckOut.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/NewestVersion.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"
#include "providers/subversion/Tasks.h"
#include "providers/subversion/UserName.h"

#include <optional>
#include <utility>

namespace svnscc {

namespace {

struct Refusal {
    SCCRTN result;
    std::string reason;
};

std::optional<Refusal> refusal(const FileState &state, const std::string &user) {
    if (!state.isInArchive && !state.isNewInArchive) {
        return Refusal{SCC_E_FILENOTCONTROLLED, "not under version control"};
    }
    if (state.isDirectory) {
        return Refusal{SCC_E_OPNOTSUPPORTED, "a directory is not checked out"};
    }
    if (state.isDeletedInArchive) {
        return Refusal{SCC_E_FILENOTCONTROLLED, "deleted in the repository"};
    }
    if (state.isLockedElsewhere()) {
        const bool isOwn = state.lockInArchive->owner == user;
        return Refusal{isOwn ? SCC_E_ALREADYCHECKEDOUT : SCC_E_FILEISLOCKED,
                       holderText(*state.lockInArchive) + (isOwn ? ", in another working copy" : "")};
    }
    if (state.isCheckedOutHere() && !state.isMissing) {
        return Refusal{SCC_E_ALREADYCHECKEDOUT, "already checked out"};
    }
    return std::nullopt;
}

} // namespace

SCCRTN checkOut(Client &client, const Names &names, const std::string &comment) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    const std::string user = userName(client);
    Names taken;
    Names toLock;
    std::vector<FileState> takenStates;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (const auto refused = refusal(states[i], user)) {
            tally.failed(refused->result, names[i], refused->reason);
            continue;
        }
        taken.push_back(names[i]);
        takenStates.push_back(states[i]);
        if (!states[i].isCheckedOutHere()) {
            toLock.push_back(names[i]);
        }
    }
    client.stopIfCancelled();
    bringToNewest(client, taken, takenStates);
    addToCurrentTask(client, lockFiles(client, toLock, comment, tally));
    return tally.result();
}

} // namespace svnscc
