// Finds the files of the model that the CM tool manages.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/host/Iterators.h"

/// Returns whether the CM tool manages the unit's file. Files of references, of embedded files in a reference, of
/// the workspace and of hidden subsystems are excluded.
[[nodiscard]] bool isRepositoryFileForCM(const IUnit &unit);

/// Returns an iterator over all files of the model as they are now; over none if the host has no list of them.
[[nodiscard]] IUnitIterator walkRepositoryFiles();
