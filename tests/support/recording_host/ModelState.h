// Holds the state of the model: what is open, and the names of the kinds of unit.
#pragma once

#include "tests/support/recording_host/Objects.h"

#include <map>
#include <optional>
#include <vector>

namespace recording {

struct ExtensionPair {
    CString newer;
    CString older;
};

struct ModelState {
    Project *activeProject = nullptr;
    bool hasWorkspace = true;
    Workspace *workspace = nullptr;
    std::optional<bool> projectIsOpen; ///< by default, whether there is an active project
    bool usingTSV = false;
    bool fullPathRepFiles = false;
    IObjectList repositoryFiles;        ///< the units that have a file of their own
    bool hasRepositoryFiles = true;     ///< whether the host provides them
    std::vector<CString> filesAskedFor; ///< the arguments of getByFile

    ExtensionPair projectExtension{".ory", ".orp1"};
    ExtensionPair subsystemExtension{".osb", ".osb1"};
    ExtensionPair componentExtension{".ocm", ".ocm1"};
    ExtensionPair fileExtension{".ofl", ".ofl1"};
    CString folderExtension = ".ory";
    std::vector<CString> embeddedExtensions{".doc", ".txt", ".png"};
    std::map<CString, CString> unitTypes{
        {".ory", "Project"}, {".osb", "Subsystem"}, {".ocl", "Class"}, {".ocm", "Component"}, {".ofl", "File"}};
    CString fileClassName = "File";
};

} // namespace recording
