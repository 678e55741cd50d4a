// The files of the model that are under the CM tool's care.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/host/Iterators.h"

/// Whether the unit's file is one for the CM tool: not that of a reference, of an embedded file in a reference, of
/// the workspace, or of a subsystem that is hidden.
[[nodiscard]] bool isRepositoryFileForCM(const IUnit &unit);

/// A walk over all files of the model, as they are now; over none if the host has no list of them.
[[nodiscard]] IUnitIterator walkRepositoryFiles();
