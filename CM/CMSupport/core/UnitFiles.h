// Determines which files and directories belong to a unit or to the project.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IUnit.h"

/// Returns whether the unit is a subsystem with its own directory. False for null.
[[nodiscard]] ORC_CM_API bool hasOwnDirectory(const IUnit *unit);

/// Returns whether a file with this extension, which includes the dot, is a project file in the current or the
/// former format.
[[nodiscard]] bool isProjectFileExtension(const CString &extension);
