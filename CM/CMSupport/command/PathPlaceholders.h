// Replaces the placeholders of moves and renames in a template, before the template is expanded. Each operation
// has its own placeholders. Their case matters.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

namespace command {

struct Directories {
    CString from;
    CString to;
};

struct MoveForm {
    bool isPackage = false;   ///< the unit's own directory moves; its directory setting isn't appended
    bool asDirectory = false; ///< the unit's directory moves, not its file
};

/// Replaces "$olddir", "$newdir", "$oldName" and "$newName" in "Move" or "MoveDirectory".
ORC_CM_API void fillInMove(CString &text, const Directories &directories, const IUnit &unit, MoveForm form);

/// Replaces "$dir", "$olddir", "$newdir", "$oldName" and "$newName" in "Rename". `from` and `to` are full names of
/// the file.
ORC_CM_API void fillInRename(CString &text, const CString &from, const CString &to);

/// Replaces "$oldName" and "$newName" in "RenameDirectory"; also "$dir" and "$oldDir" if `renameTemplate`, the
/// value of "Rename", contains "$olddir" or "$dir", and "$newdir" if it contains "$newdir". Required: "$oldDir"
/// has a capital here. Test: RenameMember.TheSmallSpellingIsNotReplacedInTheTemplateForDirectories.
ORC_CM_API void fillInRenameDirectory(CString &text, const CString &renameTemplate,
                                      const Directories &directories);

/// Returns the directory that contains `directory`; `directory` itself if there is none.
[[nodiscard]] CString outerDirectory(const CString &directory);

} // namespace command
