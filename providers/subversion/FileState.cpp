#include "providers/subversion/FileState.h"

#include "CM/scc/scc.h"
#include "providers/subversion/Text.h"

namespace svnscc {

namespace {

std::optional<Lock> lockFrom(const svn_lock_t *lock) {
    if (lock == nullptr) {
        return std::nullopt;
    }
    const auto text = [](const char *value) { return std::string(value != nullptr ? value : ""); };
    return Lock{text(lock->token), text(lock->owner), text(lock->comment), lock->creation_date};
}

/// Whether a revision of the repository has the file, and not only a local change that adds it.
bool isCommitted(const svn_client_status_t &status) {
    switch (status.node_status) {
    case svn_wc_status_none:
    case svn_wc_status_unversioned:
    case svn_wc_status_ignored:
    case svn_wc_status_external:
    case svn_wc_status_added:
        return false;
    case svn_wc_status_replaced:
    case svn_wc_status_deleted:
        return true;
    default:
        return status.copied == 0;
    }
}

bool isChanged(svn_wc_status_kind status) {
    return status == svn_wc_status_modified || status == svn_wc_status_replaced ||
           status == svn_wc_status_deleted || status == svn_wc_status_conflicted || status == svn_wc_status_merged;
}

} // namespace

FileState stateFrom(const svn_client_status_t &status) {
    FileState state;
    state.isInArchive = status.versioned != 0 && isCommitted(status);
    state.isNewInArchive = !state.isInArchive && status.repos_node_status == svn_wc_status_added;
    state.isKnown = status.versioned != 0 || state.isNewInArchive;
    state.isDeletedInArchive = state.isInArchive && status.repos_node_status == svn_wc_status_deleted;
    state.isOutOfDate = status.repos_node_status != svn_wc_status_none;
    state.isDirectory = (state.isNewInArchive ? status.ood_kind : status.kind) == svn_node_dir;
    state.isMissing = status.node_status == svn_wc_status_missing || status.node_status == svn_wc_status_none ||
                      status.node_status == svn_wc_status_incomplete;
    state.isModified = state.isInArchive && (isChanged(status.node_status) || isChanged(status.text_status) ||
                                             isChanged(status.prop_status));
    state.isDeletedHere = status.node_status == svn_wc_status_deleted;
    state.isConflicted = status.conflicted != 0;
    state.isShared = status.file_external != 0;
    state.changelist = status.changelist != nullptr ? status.changelist : "";
    state.lockHere = lockFrom(status.lock);
    state.lockInArchive = lockFrom(status.repos_lock);
    return state;
}

long statusBits(const FileState &state, const std::string &user) {
    if (!state.isInArchive && !state.isNewInArchive) {
        return SCC_STATUS_NOTCONTROLLED;
    }
    long bits = SCC_STATUS_CONTROLLED;
    const auto set = [&](bool condition, long bit) { bits |= condition ? bit : 0; };
    if (state.isCheckedOutHere()) {
        bits |= SCC_STATUS_CHECKEDOUT | SCC_STATUS_OUTBYUSER | SCC_STATUS_OUTEXCLUSIVE;
    } else if (state.lockInArchive) {
        bits |= SCC_STATUS_OUTEXCLUSIVE;
        bits |= state.lockInArchive->owner == user ? SCC_STATUS_OUTBYUSER : SCC_STATUS_OUTOTHER;
    }
    set(state.isOutOfDate, SCC_STATUS_OUTOFDATE);
    set(state.isDeletedInArchive, SCC_STATUS_DELETED);
    set(state.isConflicted, SCC_STATUS_MERGED);
    set(state.isShared, SCC_STATUS_SHARED);
    set(state.isModified, SCC_STATUS_MODIFIED);
    return bits;
}

std::string holderText(const Lock &lock) {
    std::string text = "checked out by " + lock.owner + " since " + timeText(lock.since);
    if (!lock.comment.empty()) {
        text += " (" + lock.comment + ")";
    }
    return text;
}

} // namespace svnscc
