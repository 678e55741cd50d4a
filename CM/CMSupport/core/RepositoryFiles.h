// Finds the files of the model that are for the CM tool.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/host/Iterators.h"

/// Returns whether the unit's file is for the CM tool: not that of a reference, of an embedded file in a
/// reference, of the workspace, or of a hidden subsystem.
[[nodiscard]] bool isRepositoryFileForCM(const IUnit &unit);

/// Returns an iterator over all files of the model as they are now; over none if the host has no list of them.
[[nodiscard]] IUnitIterator walkRepositoryFiles();
