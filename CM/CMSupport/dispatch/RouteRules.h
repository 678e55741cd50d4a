// Chooses the route of an operation where the choice depends on more than the project: on the provider's name, on
// hybrid mode, or on the units.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CString.h"

class IDObject;
class IUnit;

namespace dispatch {

/// Runs the command in hybrid mode, otherwise the provider form, as required even in a project that works by
/// commands. Test: FetchEntries.FetchForDiffGoesToTheProviderWithACommandToolToo.
int fetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

// On the provider route these three run the command in hybrid mode: move and delete if one of the units is a
// subsystem with a directory of its own, rename if the directories differ.

/// Required: the owners in the list count too. Test: MoveEntries.InHybridModeAnOwnerWithADirectoryCountsLikeAUnit.
int moveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
int deleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
int renameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags);

// On the provider route these two run the command unless the provider handles directories as a whole. Test:
// ProviderEntries.OnlyTesseraMovesAPackagesContentAndDeletesADirectory.

int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                       CMArgumentList &args, CMDiagnosticList &diags, bool hybrid);
/// In a team-server project, deletes a unit `object` on the server instead of running the command, and returns 1.
int deleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid,
                    IDObject *object);

} // namespace dispatch
