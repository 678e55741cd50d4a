// Puts units under the command tool: by one command for each unit or, if the property keys::addOncePerDirectory is
// true, by checking each directory out once, adding all its units, and checking it in once.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CMap.h"

class CMAddMember final : public CMWorkspaceOperation {
  public:
    /// Maps a directory to the units with files directly in it. The owner of the map owns the lists.
    using UnitsByDirectory = CMap<CString, const char *, CMUnitList *, CMUnitList *>;

    /// Adds the units; ignores `hybrid`. If the host has a save callback, first marks all units as modified and
    /// saves the model. Returns CommandRun::result() or, once for each directory, the result of the last check out
    /// or check in of a directory; 0 without a tool, which makes one diagnostic.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Adds each unit once to the list of its file's directory, and creates missing lists with `new`. Skips null
    /// entries.
    void groupUnitsByPersistAs(CMUnitList &units, UnitsByDirectory &map);

    // The commands for a directory. In their templates only the names that the source lists are replaced, and
    // `args` is not used. Test: AddMemberByDirectory.PlaceholdersAreReplacedEverywhereAndOtherNamesStay.
    // Each returns 0 without a tool, which makes one diagnostic, without a template or an installation root, and
    // for a path that no command can quote; else the result of runLogged().
    int checkOutDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);
    int addMemberWithoutCheckInCheckOutDirectory(const CString &filePath, CMArgumentList &args,
                                                 CMDiagnosticList &diags);
    int checkInDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);

  private:
    int addByDirectories(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
