// Finds the open workspace and the active project.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IProject.h"

class ORC_HOST_API CurrentWorkspace {
  public:
    /// The active project, or null.
    [[nodiscard]] static IProject *GetActiveProject();
    /// The workspace singleton, or null.
    [[nodiscard]] static CurrentWorkspace *Workspace();
    /// The workspace object, or null.
    [[nodiscard]] IWorkspace *getWorkspace() const;
    /// Applies the list of reloaded units to the other open projects, and clears it.
    static void ApplySavedUnitsListToNonActiveProjects();
};

class ORC_HOST_API CurrentProject {
  public:
    /// The project singleton, or null. Use it only to test whether a project is open.
    [[nodiscard]] static CurrentProject *Project();
};
