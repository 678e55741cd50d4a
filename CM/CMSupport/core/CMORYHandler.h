// CMORYHandler: keeps the project file in step around one operation. In the old layout on the command route the CM
// tool works on the project file in the directory of the project, while the host reads it in the project's own
// directory for units. A small file transaction: start, then commit or roll back. For every other file it does
// nothing and says so, and an operation can use it without asking.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

class CMORYHandler {
  public:
    enum ORYOPER {
        ORYAdd = 0,
        ORYCheckOut = 1,
        ORYCheckIn = 2,
        ORYFetch = 4,
        ORYInspect = 5, ///< the tool only reads
        ORYNone = 6,    ///< at rest
    };

    /// The unit or item stays the caller's and must outlive the operation.
    CMORYHandler() = default;
    explicit CMORYHandler(IUnit *unit) : unit_(unit) {}
    explicit CMORYHandler(CMArchiveItem *item) : item_(item) {}
    CMORYHandler(const CMORYHandler &) = delete;
    CMORYHandler &operator=(const CMORYHandler &) = delete;
    /// Rolls back what was not committed, as far as the host lets it.
    virtual ~CMORYHandler();

    /// Prepares the operation; to add and to check in, the file is copied to where the tool works. 1 on success. 0
    /// at rest, if there is nothing to do for this file or it may not be put there; 0 with the operation under
    /// way, if the copy failed.
    virtual int startTranscation(ORYOPER operation);
    /// Brings the tool's file back over the unit's: 1 on success, 0 if it is missing or can't be moved. After an
    /// inspection removes it: 0 if it can't be deleted, else 1, also if it is missing. 0 at rest. At rest
    /// afterwards.
    virtual int commit();
    /// Removes the tool's file. 1 on success; 0 at rest, or if the file could not be deleted: the operation then
    /// stays open.
    virtual int rollBack();
    /// Where the host and where the tool has the file. Both are empty without a unit or item, or without a
    /// project.
    virtual void getUnitPath(CString &unitPath, CString &toolPath);

    /// Whether the file has two places: the paths differ, and the directories are not one that is spelt in two
    /// ways. Gives both paths.
    bool doPreTransValidation(CString &unitPath, CString &toolPath);
    /// Whether the file may be put into the project's directory.
    [[nodiscard]] bool checkPermissions() const;

    /// Return the former value, and change it only at rest.
    IUnit *setUnit(IUnit *unit);
    CMArchiveItem *setArchiveItem(CMArchiveItem *item);

  private:
    [[nodiscard]] bool isProjectFile() const;

    IUnit *unit_ = nullptr;
    CMArchiveItem *item_ = nullptr;
    ORYOPER state_ = ORYNone;
};
