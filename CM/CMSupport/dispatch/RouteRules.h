// Chooses the route of the operations for which it depends on more than the project: on the provider's name, on
// hybrid mode, or on the units.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/platform/CString.h"

class IDObject;
class IUnit;

namespace dispatch {

/// Runs the command in hybrid mode, else the provider form. Required: also in a project that works by commands.
/// Test: FetchEntries.FetchForDiffGoesToTheProviderWithACommandToolToo.
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
/// In a project of the team server, the directory of a unit is deleted there and no operation runs.
int deleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid,
                    IDObject *object);

} // namespace dispatch
