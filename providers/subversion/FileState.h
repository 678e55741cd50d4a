// FileState: what Subversion knows of one file, of the working copy and of the repository.
#pragma once

#include <apr_time.h>
#include <svn_client.h>

#include <optional>
#include <string>

namespace svnscc {

struct Lock {
    std::string token;
    std::string owner;
    std::string comment;
    apr_time_t since = 0;
};

struct FileState {
    bool isKnown = false;            ///< the working copy has it, or the repository's newest revision has
    bool isInArchive = false;        ///< a revision of the repository has it
    bool isNewInArchive = false;     ///< added by somebody else, and not in this working copy yet
    bool isDeletedInArchive = false; ///< the newest revision doesn't have it any more
    bool isOutOfDate = false;        ///< the repository has a newer version
    bool isDirectory = false;
    bool isMissing = false;  ///< not on disk
    bool isModified = false; ///< changed locally
    bool isDeletedHere = false;
    bool isConflicted = false;
    bool isShared = false; ///< a file of another directory of the repository (svn:externals)
    std::string changelist;
    std::optional<Lock> lockHere;      ///< the lock that this working copy believes to have
    std::optional<Lock> lockInArchive; ///< the lock that the repository has

    /// Whether this working copy has a lock that the repository confirms.
    [[nodiscard]] bool isCheckedOutHere() const {
        return lockHere && lockInArchive && lockHere->token == lockInArchive->token;
    }
    /// Whether there is a lock that is not this working copy's.
    [[nodiscard]] bool isLockedElsewhere() const { return lockInArchive && !isCheckedOutHere(); }
};

/// Reads the state out of what Subversion reports of a file.
FileState stateFrom(const svn_client_status_t &status);

/// The state as SCC_STATUS_ bits. `user` is the name by which the repository knows this user.
long statusBits(const FileState &state, const std::string &user);

/// "checked out by bob since 2026-11-22 08:10 (comment)".
std::string holderText(const Lock &lock);

} // namespace svnscc
