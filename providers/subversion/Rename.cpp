#include "providers/subversion/Rename.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/KeptCopy.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <vector>

namespace svnscc {

namespace {

namespace fs = std::filesystem;

void moveOnDisk(const std::string &from, const std::string &to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (error) {
        throw Failure(SCC_E_OPNOTPERFORMED,
                      "\"" + from + "\" can't be renamed to \"" + to + "\": " + error.message());
    }
}

/// A file that has something which a move in the repository would commit or lose.
struct Carried {
    std::string path;
    std::string copy; ///< of its changes; empty without any
    std::string changelist;
    std::string lockComment;
    bool isCheckedOut = false;
};

/// Renames one file or directory; its steps undo themselves when one fails.
class Renaming {
  public:
    Renaming(Client &client, const std::string &from, const std::string &to)
        : client_(client), from_(from), to_(to), isRenamedOnDisk_(!exists(from) && exists(to)) {}

    void run() {
        refuseWhatCannotBe();
        if (isRenamedOnDisk_) {
            moveOnDisk(to_, from_);
        }
        try {
            collect();
            setChangesAside();
            moveInRepository();
        } catch (...) {
            client_.finish();
            restore();
            throw;
        }
        client_.finish();
        putChangesBack(to_);
        checkOutAgain();
        if (!isDirectory_ && !isRenamedOnDisk_ && wasOnDisk_) {
            moveOnDisk(to_, from_); // the API leaves the local file to the host, with all that it has
        }
    }

  private:
    void refuseWhatCannotBe() const {
        const FileState source = statesOf(client_, {from_}).front();
        if (!source.isInArchive) {
            throw Failure(SCC_E_FILENOTCONTROLLED, from_ + ": not under version control");
        }
        if (source.isLockedElsewhere()) {
            throw Failure(SCC_E_OPNOTPERFORMED, from_ + ": " + holderText(*source.lockInArchive));
        }
        const FileState target = statesOf(client_, {to_}).front();
        if (target.isInArchive || target.isNewInArchive) {
            throw Failure(SCC_E_OPNOTPERFORMED, to_ + ": under version control already");
        }
        if (!isWithin(client_.project().root, to_)) {
            throw Failure(SCC_E_OPNOTPERFORMED, to_ + ": not in the working copy of the project");
        }
        const bool isEmptyDirectory = fs::is_directory(to_) && fs::is_empty(to_) && fs::is_directory(from_);
        if (!isRenamedOnDisk_ && exists(to_) && !isEmptyDirectory) {
            throw Failure(SCC_E_OPNOTPERFORMED, to_ + ": there is such a file already");
        }
        if (isEmptyDirectory) {
            fs::remove(to_);
        }
    }

    void collect() {
        wasOnDisk_ = exists(from_);
        bool isOutOfDate = false;
        walk(client_, from_, svn_depth_infinity, [&](const std::string &path, const svn_client_status_t &status) {
            const FileState state = stateFrom(status);
            if (path == from_) {
                isDirectory_ = state.isDirectory;
            }
            if (state.isLockedElsewhere()) {
                throw Failure(SCC_E_OPNOTPERFORMED, path + ": " + holderText(*state.lockInArchive));
            }
            isOutOfDate = isOutOfDate || state.isOutOfDate || state.isMissing;
            if (state.isDirectory || !state.isInArchive || !(state.isModified || state.isCheckedOutHere())) {
                return;
            }
            carried_.push_back({path,
                                {},
                                state.changelist,
                                state.isCheckedOutHere() ? state.lockInArchive->comment : std::string(),
                                state.isCheckedOutHere()});
            if (state.isModified && !state.isMissing && !state.isDeletedHere) {
                changed_.push_back(carried_.size() - 1);
            }
        });
        needsUpdate_ = isDirectory_ || isOutOfDate;
    }

    void setChangesAside() {
        Names reverted;
        for (const std::size_t index : changed_) {
            carried_[index].copy = keepCopy(carried_[index].path);
            reverted.push_back(carried_[index].path);
        }
        if (!reverted.empty()) {
            check(svn_client_revert4(client_.list(reverted), svn_depth_empty, nullptr, FALSE, FALSE, TRUE,
                                     client_.get(), client_.pool()));
        }
        if (needsUpdate_) {
            // A directory can be moved only if all of it has one revision.
            const svn_opt_revision_t head = newest();
            check(svn_client_update4(nullptr, client_.list({from_}), &head, svn_depth_unknown, FALSE, TRUE, FALSE,
                                     TRUE, FALSE, client_.get(), client_.pool()));
        }
    }

    void moveInRepository() {
        touched_ = {from_, to_};
        client_.observed(
            [&](const svn_wc_notify_t &notification) {
                const std::string path = notification.path;
                if (notification.action == svn_wc_notify_add && path != to_ && isWithin(path, to_)) {
                    touched_.push_back(path); // a new directory above the target
                }
            },
            [&] {
                check(svn_client_move7(client_.list({from_}), to_.c_str(), FALSE, TRUE, TRUE, FALSE, nullptr,
                                       nullptr, nullptr, client_.get(), client_.pool()));
            });
        const std::string comment = "Moved " + relativeTo(client_.project().directory, from_) + " to " +
                                    relativeTo(client_.project().directory, to_);
        client_.commit(touched_, comment, isDirectory_ ? svn_depth_infinity : svn_depth_empty, false);
    }

    /// Where something that was within the old place is within the new one.
    [[nodiscard]] std::string movedPlace(const std::string &path, const std::string &place) const {
        return isWithin(from_, path) ? joined(place, relativeTo(from_, path)) : path;
    }

    /// Overwrites the files at `place` with the changes that were set aside.
    void putChangesBack(const std::string &place) {
        for (const std::size_t index : changed_) {
            Carried &file = carried_[index];
            if (!file.copy.empty()) {
                moveOnDisk(movedPlace(file.copy, place), movedPlace(file.path, place));
                file.copy.clear();
            }
        }
    }

    void checkOutAgain() {
        std::map<std::string, Names> byComment;
        std::map<std::string, Names> byChangelist;
        for (const Carried &file : carried_) {
            const std::string path = movedPlace(file.path, to_);
            if (file.isCheckedOut) {
                byComment[file.lockComment].push_back(path);
            }
            if (!file.changelist.empty()) {
                byChangelist[file.changelist].push_back(path);
            }
        }
        Tally tally(client_.output());
        for (const auto &[comment, files] : byComment) {
            lockFiles(client_, files, comment, tally);
        }
        for (const auto &[changelist, files] : byChangelist) {
            check(svn_client_add_to_changelist(client_.list(files), changelist.c_str(), svn_depth_empty, nullptr,
                                               client_.get(), client_.pool()));
        }
    }

    /// Brings back what was there. Failures on the way are not reported: the first one is, by the caller.
    void restore() noexcept {
        try {
            if (!touched_.empty()) {
                bringStrayFilesBack();
                svn_error_clear(svn_client_revert4(client_.list(touched_), svn_depth_infinity, nullptr, FALSE,
                                                   FALSE, FALSE, client_.get(), client_.pool()));
                std::error_code ignored;
                fs::remove_all(isDirectory_ ? to_ : std::string(), ignored);
            }
            putChangesBack(from_);
            if (isRenamedOnDisk_) {
                moveOnDisk(from_, to_);
            }
        } catch (const std::exception &failure) {
            client_.output().error(failure.what());
        }
    }

    /// Copies what a move has carried to the new place, files that Subversion doesn't know included, to the old
    /// one.
    void bringStrayFilesBack() const {
        if (isDirectory_ && exists(to_)) {
            fs::copy(to_, from_, fs::copy_options::recursive | fs::copy_options::skip_existing);
        }
    }

    Client &client_;
    const std::string from_;
    const std::string to_;
    bool isRenamedOnDisk_;
    bool wasOnDisk_ = false;
    bool isDirectory_ = false;
    bool needsUpdate_ = false;
    std::vector<Carried> carried_;
    std::vector<std::size_t> changed_; ///< those of carried_ whose contents are set aside
    Names touched_;                    ///< what the move has scheduled
};

} // namespace

void renameFile(Client &client, const std::string &from, const std::string &to) {
    Renaming(client, from, to).run();
}

} // namespace svnscc
