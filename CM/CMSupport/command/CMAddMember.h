// Adds units to the archive: with one command per unit or, if the property keys::addOncePerDirectory is true,
// directory by directory (check it out, add its units, check it in).
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CMap.h"

class CMAddMember final : public CMWorkspaceOperation {
  public:
    /// Maps a directory to the units with files directly in it. The owner of the map owns the lists.
    using UnitsByDirectory = CMap<CString, const char *, CMUnitList *, CMUnitList *>;

    /// Adds the units; ignores `hybrid`. If the host has a save callback, first marks all units as modified and
    /// saves the model. Returns CommandRun::result() or, when adding directory by directory, the result of the
    /// last check out or check in of a directory. Without a tool, appends one diagnostic and returns 0.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Adds each unit once to the list of its file's directory, and creates missing lists with `new`. Skips null
    /// entries.
    void groupUnitsByPersistAs(CMUnitList &units, UnitsByDirectory &map);

    // The commands for a directory. In their templates only the names listed in CMAddMember.cpp are replaced, and
    // `args` is not used. Test: AddMemberByDirectory.PlaceholdersAreReplacedEverywhereAndOtherNamesStay. Each
    // returns the result of runLogged(), or 0 without a tool (after appending one diagnostic), without a template
    // or an installation root, and for a path that no command can quote.
    int checkOutDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);
    int addMemberWithoutCheckInCheckOutDirectory(const CString &filePath, CMArgumentList &args,
                                                 CMDiagnosticList &diags);
    int checkInDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);

  private:
    int addByDirectories(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
