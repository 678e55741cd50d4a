// The names that a move or a rename fills into its template before the template is expanded. Each operation has
// names of its own, and their capitals count.
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
    bool isPackage = false;   ///< the unit is the one whose directory moves, so that its setting isn't appended
    bool asDirectory = false; ///< the unit's directory moves, not its file
};

/// "$olddir", "$newdir", "$oldName" and "$newName" of "Move" and "MoveDirectory".
ORC_CM_API void fillInMove(CString &text, const Directories &directories, const IUnit &unit, MoveForm form);

/// "$dir", "$olddir", "$newdir", "$oldName" and "$newName" of "Rename". The paths are those of the file.
ORC_CM_API void fillInRename(CString &text, const CString &from, const CString &to);

/// The names of "RenameDirectory". What `renameTemplate`, the value of "Rename", holds decides on "$dir",
/// "$oldDir" and "$newdir"; "$oldDir" is spelt with a capital here: deliberate.
ORC_CM_API void fillInRenameDirectory(CString &text, const CString &renameTemplate,
                                      const Directories &directories);

/// The directory that holds `directory`; `directory` itself if there is none.
[[nodiscard]] CString outerDirectory(const CString &directory);

} // namespace command
