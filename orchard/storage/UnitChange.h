// Changes of a unit's name, owner or existence that its files follow, with room for a CM tool in the middle.
//
//     auto change = orchard::UnitChange::move({valve}, *control);
//     if (!change) { ... }                       // change.problems() says why; nothing has changed
//     change.begin();                            // the model has taken it on, the files have not
//     CMFacade::MoveMember(...);                 // the tool moves what it keeps (files() lists what to tell it)
//     problems = change.finish(orchard::FilesBy::tool);
//
// Nothing is lost on the way: a change that is not finished is taken back, a file is never written over, and what
// could not be brought to its place is told with the place where it is.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/storage/Problem.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class IUnit;

namespace orchard {

/// Who was to bring the files to their places, or to remove them.
enum class FilesBy {
    host, ///< this call does it; what a tool has done already is accepted
    tool, ///< a tool has done it before; where it has done nothing, the change is taken back
};

/// A file or directory that comes to stand elsewhere, or that goes.
struct FileChange {
    IUnit *unit = nullptr; ///< whose file, or own directory, it is
    std::string from;      ///< full path
    std::string to;        ///< full path; empty for one that goes
    /// The unit's own directory with all that is in it, files that the model doesn't know among them. A directory
    /// that other units use, too, is never listed: its files are, one by one.
    bool isDirectory = false;
    /// Of the file of a unit whose own directory is one that others use, too: one of those, if known. A tool must
    /// not be told to move or remove that directory.
    IUnit *sharedWith = nullptr;
};

/// A unit that gets another owner: what CMFacade::MoveMember takes as a triple.
struct OwnerChange {
    IUnit *unit = nullptr;
    IUnit *oldOwner = nullptr;
    IUnit *newOwner = nullptr;
};

class ORCHARD_API UnitChange {
  public:
    /// Another name. The file follows if it is named after the unit, and so does the last part of the unit's own
    /// directory, unless other units use that, too. An embedded file is its name; without an extension the new one
    /// gets that of the old one. Refused for the project, for a stub, for a name that is taken or can't be a
    /// file's, and where the file of the unit or of its owner can't be written (read-only, a reference, changed
    /// behind the program).
    [[nodiscard]] static UnitChange rename(IUnit &unit, std::string_view name);
    /// Another owner. Units that lie below others of the list move along with these. Files go into the directory
    /// of the new owner, a subsystem's own directory goes as a whole, external and referenced files stay where
    /// they are. Refused into the unit itself or below, into a kind that can't hold it, a stub or a reference,
    /// onto a file or directory that is there, and where the file of an owner can't be written. A unit whose own
    /// file is read-only moves, too; that file names its new owner from its next save on.
    [[nodiscard]] static UnitChange move(const std::vector<IUnit *> &units, IUnit &newOwner);
    /// Out of the model, with all below. External and referenced files stay; so do files that the model doesn't
    /// know, and a directory that holds any. Refused for the project, where the owner's file can't be written, and
    /// where a file changed behind the program, since it holds what nobody here has seen.
    [[nodiscard]] static UnitChange remove(const std::vector<IUnit *> &units);

    UnitChange(UnitChange &&other) noexcept;
    UnitChange &operator=(UnitChange &&other) noexcept;
    /// A change that was begun and not finished is taken back.
    ~UnitChange();

    /// Whether it can be done; else problems() says why not, and the calls below do nothing.
    explicit operator bool() const { return problems().empty(); }
    [[nodiscard]] const Problems &problems() const;

    /// What to tell a tool, owners first: one entry for each file, or for a directory that goes as a whole.
    [[nodiscard]] const std::vector<FileChange> &files() const;
    /// Of a move: the units that get another owner.
    [[nodiscard]] const std::vector<OwnerChange> &owners() const;
    /// The units of files(), and of those in its directories: what CMFacade::DeleteMember takes.
    [[nodiscard]] const std::vector<IUnit *> &units() const;
    /// Of the first unit: the full path of its file before and after (empty for one that goes, or has none), which
    /// are what CMFacade::RenameMember takes.
    [[nodiscard]] const std::string &oldPath() const;
    [[nodiscard]] const std::string &newPath() const;

    /// The model takes a new name or owner on, with file names, paths and indexes; the directories that files go
    /// into are made. Files stay, and so do units that are to go: a tool has to be told of them yet.
    void begin();
    /// Brings files and model together, and saves the files of the unit and of its owners. Begins the change if
    /// that was not done. What it answers is what the user should know; stands() tells whether the change was
    /// made. After a removal that stands the units are gone.
    Problems finish(FilesBy by);
    /// Takes back what was begun. A finished change stays.
    void cancel();
    [[nodiscard]] bool stands() const;
    /// False if a file that was there at the beginning is neither at its old place nor at its new one, as a tool
    /// has taken it elsewhere. finish() has told of it.
    [[nodiscard]] bool isComplete() const;

    class Work;

  private:
    explicit UnitChange(std::unique_ptr<Work> work);
    std::unique_ptr<Work> work_;
};

} // namespace orchard
