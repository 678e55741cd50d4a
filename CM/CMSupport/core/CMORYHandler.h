// Keeps the two copies of the project file in step around one operation. If the project uses command templates and
// the old layout (SupportTreeRepository), the CM tool uses the copy of the project file in the directory of the
// project, and the host uses the one in its directory for units. The handler is a small file transaction: start,
// then commit or roll back. For files other than the project file it does nothing and returns 0, so operations
// needn't check. Where one of the two places is a link to the other, the file is neither copied, moved nor
// deleted.
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
        ORYInspect = 5, ///< the tool only reads the file
        ORYNone = 6,    ///< at rest
    };

    /// The caller owns the unit or item, which must outlive the operation.
    CMORYHandler() = default;
    explicit CMORYHandler(IUnit *unit) : unit_(unit) {}
    explicit CMORYHandler(CMArchiveItem *item) : item_(item) {}
    CMORYHandler(const CMORYHandler &) = delete;
    CMORYHandler &operator=(const CMORYHandler &) = delete;
    /// Rolls back an operation that was not committed, unless the host throws.
    virtual ~CMORYHandler();

    /// Prepares the operation; for adding and checking in, copies the file to where the tool works. Returns 1 on
    /// success. Returns 0 without starting if there is nothing to do for this file or it may not be copied there.
    /// Also returns 0 if the copy failed, but then the operation has been started.
    virtual int startTranscation(ORYOPER operation);
    /// Moves the tool's file over the unit's file: 1 on success, 0 if the tool's file is missing or can't be
    /// moved. After an inspection, deletes the tool's file instead: 0 if that fails, else 1, even if the file is
    /// missing. Returns 0 if no operation is under way. Ends the operation in every case.
    virtual int commit();
    /// Deletes the tool's file. Returns 1 on success; 0 if no operation is under way, or if the file could not be
    /// deleted: the operation then stays open.
    virtual int rollBack();
    /// Assigns the host's path and the tool's path of the file. Both are empty without a unit or item, or without
    /// a project.
    virtual void getUnitPath(CString &unitPath, CString &toolPath);

    /// Returns whether the file has two places: the paths differ, and the directories are not the same one in two
    /// spellings. Assigns both paths.
    bool doPreTransValidation(CString &unitPath, CString &toolPath);
    /// Returns whether the file may be put into the project's directory.
    [[nodiscard]] bool checkPermissions() const;

    /// Set the unit or item and return the previous one. While an operation is under way, they change nothing and
    /// return the current one.
    IUnit *setUnit(IUnit *unit);
    CMArchiveItem *setArchiveItem(CMArchiveItem *item);

  private:
    [[nodiscard]] bool isProjectFile() const;

    IUnit *unit_ = nullptr;
    CMArchiveItem *item_ = nullptr;
    ORYOPER state_ = ORYNone;
};
