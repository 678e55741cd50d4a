// CMAddMember: puts units under the command tool; one command a unit, or, as the tool's property says, each
// directory checked out once, all its units added, and the directory checked in once.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CMap.h"

class CMAddMember final : public CMWorkspaceOperation {
  public:
    /// Units by the directory that their files stand in. The lists belong to the map's owner.
    using UnitsByDirectory = CMap<CString, const char *, CMUnitList *, CMUnitList *>;

    /// The hybrid flag is ignored. Returns the outcome of the last unit that was worked on; on the
    /// once-per-directory way that of the last command.
    int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) override;

    /// Files each unit under the directory of its file, once; null entries are passed over. The lists that the map
    /// lacks are made by `new`.
    void groupUnitsByPersistAs(CMUnitList &units, UnitsByDirectory &map);

    // The commands of the once-per-directory way. Their templates are not expanded, deliberately: only the names
    // that stand in the source are replaced. Each returns what Execute returned; 0 too without a template, without
    // an installation root, or without a tool, which makes one diagnostic. The arguments are not used.
    int checkOutDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);
    int addMemberWithoutCheckInCheckOutDirectory(const CString &filePath, CMArgumentList &args,
                                                 CMDiagnosticList &diags);
    int checkInDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);

  private:
    int addByDirectories(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
};
