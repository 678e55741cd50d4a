// Changes a unit's name, owner or existence together with its files, and lets a CM tool act in between.
//
//     auto change = orchard::UnitChange::move({valve}, *control);
//     if (!change) { ... }                       // change.problems() says why; nothing has changed
//     change.begin();                            // writes the plan and changes the model, not the files
//     CMFacade::MoveMember(...);                 // moves what the tool keeps (files() lists what to pass to it)
//     problems = change.finish(orchard::FilesBy::tool);
//
// Nothing is lost on the way: an unfinished change is taken back, a file is never overwritten, and a file that
// could not be moved is reported with its current place. After a crash, recover() (Recovery.h) finishes the change
// or takes it back.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Problem.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class IUnit;

namespace orchard {

/// Who moves or removes the files.
enum class FilesBy {
    host, ///< finish() does it, and accepts what a tool has already done
    tool, ///< a tool has done it before finish(); if it has done nothing, the change is taken back
};

/// A file or directory to be moved or removed.
struct FileChange {
    IUnit *unit = nullptr; ///< the unit whose file, or own directory, it is
    std::string from;      ///< full path
    std::string to;        ///< full path; empty if it is to be removed
    /// Whether it is the unit's own directory with everything in it, including files that the model doesn't know.
    /// A directory that other units also use is never listed; its files are listed one by one.
    bool isDirectory = false;
    /// For a file of a unit whose own directory other units also use: one of them, if known. A tool must not be
    /// asked to move or remove that directory.
    IUnit *sharedWith = nullptr;
};

/// A unit that changes its owner: CMFacade::MoveMember takes it as a triple.
struct OwnerChange {
    IUnit *unit = nullptr;
    IUnit *oldOwner = nullptr;
    IUnit *newOwner = nullptr;
};

class ORCHARD_API UnitChange {
  public:
    /// Renames a unit. Its file is renamed, too, if it is named after the unit, and so is the last part of the
    /// unit's own directory, unless other units also use it. The name of an embedded file is its file name; a new
    /// name without an extension gets the old extension. Refused for the project, for a stub, for a name that is
    /// in use or can't be a file name, and if the file of the unit or of its owner can't be written (read-only, a
    /// reference, changed by another program).
    [[nodiscard]] static UnitChange rename(IUnit &unit, std::string_view name);
    /// Renames a unit's file only. Refused as rename() is, except that the unit's own file may be read-only.
    [[nodiscard]] static UnitChange renameFile(IUnit &unit, std::string_view fileName);
    /// Moves units to another owner. Units that are below other units in the list move along with them. Files go
    /// into the directory of the new owner, a subsystem's own directory moves as one, external and referenced
    /// files stay where they are. Refused for a new owner that is the unit itself or below it, can't hold it, or
    /// is a stub or a reference; for a file or directory that exists at the new place; and if the file of an owner
    /// can't be written. A unit with a read-only file can be moved; its file will name the new owner after it is
    /// next saved.
    [[nodiscard]] static UnitChange move(const std::vector<IUnit *> &units, IUnit &newOwner);
    /// Removes units and everything below them from the model. External and referenced files stay, and so do files
    /// that the model doesn't know and any directory that contains them. Refused for the project, for a stub whose
    /// file exists, if the owner's file can't be written, and if another program has changed a file, because the
    /// model doesn't know what that file now lists.
    [[nodiscard]] static UnitChange remove(const std::vector<IUnit *> &units);

    UnitChange(UnitChange &&other) noexcept;
    UnitChange &operator=(UnitChange &&other) noexcept;
    /// Takes back a change that was begun and not finished.
    ~UnitChange();

    /// Whether the change can be made; if not, problems() says why, and the calls below do nothing.
    explicit operator bool() const { return problems().empty(); }
    [[nodiscard]] const Problems &problems() const;

    /// What to pass to a tool, owners first: one entry for each file, or for a directory that is moved or removed
    /// as one.
    [[nodiscard]] const std::vector<FileChange> &files() const;
    /// For a move, the units that change their owner.
    [[nodiscard]] const std::vector<OwnerChange> &owners() const;
    /// The units of files(), and those in its directories, as CMFacade::DeleteMember takes them.
    [[nodiscard]] const std::vector<IUnit *> &units() const;
    /// For the first unit, the full path of its file before and after, as CMFacade::RenameMember takes them; empty
    /// if the file is removed or there is none.
    [[nodiscard]] const std::string &oldPath() const;
    [[nodiscard]] const std::string &newPath() const;

    /// Writes the plan of the change beside the project file, creates the directories that files move into, and
    /// applies a new name or owner to the model, including file names, paths and indexes. Files stay in place, and
    /// units to be removed stay in the model, because a tool must still be able to refer to them. `by` is the one
    /// that will move the files; `command` is what the user asked for, one line, which is shown if the change has
    /// to be finished after a crash. Returns why the change can't begin, which problems() then holds, too.
    Problems begin(FilesBy by = FilesBy::tool, std::string_view command = {});
    /// Brings files and model in line, and saves the files of the unit and of its owners. Begins the change if
    /// that was not done. If a step fails, takes the change back, or, if a tool has moved or removed a file
    /// already, leaves the plan, from which recover() continues. Returns what the user should know; stands()
    /// returns whether the change was made. After a successful removal the units no longer exist.
    Problems finish(FilesBy by);
    /// After a tool has renamed a file and not its directory, or the reverse: what to rename with the tool before
    /// finish(), within one directory, so that file and archive agree. Each `unit` is the first of files().
    [[nodiscard]] std::vector<FileChange> halfWay() const;
    /// Takes back a change that was begun; has no effect on a finished one.
    void cancel();
    /// Whether the change was made, in the model at least.
    [[nodiscard]] bool stands() const;
    /// False if the change is open, or if a file that existed at the beginning is at neither its old nor its new
    /// place, because a tool has put it elsewhere; finish() has reported it.
    [[nodiscard]] bool isComplete() const;
    /// Whether steps are left on disk, so that the plan is still there.
    [[nodiscard]] bool isOpen() const;

    class Work;

  private:
    explicit UnitChange(std::unique_ptr<Work> work);
    std::unique_ptr<Work> work_;
};

} // namespace orchard
