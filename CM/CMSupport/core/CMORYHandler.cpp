#include "CM/CMSupport/core/CMORYHandler.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/Quietly.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Utilities.h"
#include "CM/platform/Files.h"
#include "CM/platform/PathText.h"

#include <utility>

namespace {

constexpr int replaceAndAllowCopy = 3; // flags of oqMoveFileEx

IProject *openProject() {
    return CurrentProject::Project() == nullptr ? nullptr : CurrentWorkspace::GetActiveProject();
}

/// Reads only the property: whether a provider was found doesn't matter here.
bool isCommandRoute() {
    const IProperty *const property = findGeneralProperty(keys::useProvider);
    return property == nullptr || property->getValue().CompareNoCase("Yes") != 0;
}

/// Returns whether the file has two places, and not one in two spellings.
bool areTwoPlaces(const CString &unitPath, const CString &toolPath) {
    return unitPath != toolPath &&
           !platform::sameFile(platform::directoryOfPath(unitPath), platform::directoryOfPath(toolPath));
}

/// Returns whether each place has a file of its own. If one place is a link to the other, there is only one copy,
/// which must be neither moved nor deleted. A tool may replace the link, so this is asked when the tool has ended.
bool areTwoFiles(const CString &unitPath, const CString &toolPath) {
    return areTwoPlaces(unitPath, toolPath) && !platform::sameFile(unitPath, toolPath);
}

} // namespace

CMORYHandler::~CMORYHandler() {
    core::quietly([this] { CMORYHandler::rollBack(); });
}

IUnit *CMORYHandler::setUnit(IUnit *unit) { return state_ == ORYNone ? std::exchange(unit_, unit) : unit_; }

CMArchiveItem *CMORYHandler::setArchiveItem(CMArchiveItem *item) {
    return state_ == ORYNone ? std::exchange(item_, item) : item_;
}

bool CMORYHandler::isProjectFile() const {
    CString extension;
    if (unit_ != nullptr) {
        extension = unit_->getFileExtension();
    } else if (item_ != nullptr) {
        extension = item_->getSuffix();
    } else {
        return false;
    }
    return isProjectFileExtension(extension);
}

void CMORYHandler::getUnitPath(CString &unitPath, CString &toolPath) {
    unitPath.Empty();
    toolPath.Empty();
    const IProject *const project = openProject();
    if ((unit_ == nullptr && item_ == nullptr) || project == nullptr) {
        return;
    }
    const CString directory = unit_ != nullptr ? unit_->getOwnDirectory() : item_->getLocalPath();
    const CString file = unit_ != nullptr ? unit_->getFileName() : item_->getFileName();
    unitPath = paths::join(directory, file);
    toolPath = unitPath;
    if (isProjectFile() && isCommandRoute() && CMProperty::isPre40Compatible()) {
        toolPath = paths::join(project->getProjectFileDirectory(), file);
    }
}

bool CMORYHandler::doPreTransValidation(CString &unitPath, CString &toolPath) {
    getUnitPath(unitPath, toolPath);
    return isProjectFile() && areTwoPlaces(unitPath, toolPath);
}

bool CMORYHandler::checkPermissions() const {
    const IProject *const project = openProject();
    if ((unit_ == nullptr && item_ == nullptr) || project == nullptr) {
        return false;
    }
    const CString directory = project->getProjectFileDirectory();
    if (!oqFileHasWritePermission(directory)) {
        return false;
    }
    return !isProjectFile() || oqFileHasWritePermission(paths::join(directory, ".."));
}

int CMORYHandler::startTranscation(ORYOPER operation) {
    CString unitPath;
    CString toolPath;
    if (operation == ORYNone || !doPreTransValidation(unitPath, toolPath)) {
        return 0;
    }
    state_ = operation;
    if (operation != ORYAdd && operation != ORYCheckIn) {
        return 1;
    }
    if (!checkPermissions()) {
        state_ = ORYNone;
        return 0;
    }
    if (!areTwoFiles(unitPath, toolPath)) {
        return 1; // the tool works on the unit's file
    }
    return platform::copyFile(unitPath, toolPath, false) ? 1 : 0; // required: a failure leaves it open
}

int CMORYHandler::commit() {
    if (state_ == ORYNone) {
        return 0;
    }
    CString unitPath;
    CString toolPath;
    getUnitPath(unitPath, toolPath);
    int result = 1;
    if (areTwoFiles(unitPath, toolPath)) {
        const bool toolHasFile = oqFileExist(toolPath);
        if (state_ == ORYInspect) {
            if (toolHasFile) {
                platform::makeWritable(toolPath);
                result = oqDeleteFile(toolPath, 1);
            }
        } else if (toolHasFile) {
            platform::makeWritable(unitPath);
            result = oqMoveFileEx(toolPath, unitPath, replaceAndAllowCopy);
        } else {
            result = 0;
        }
    }
    state_ = ORYNone;
    return result;
}

int CMORYHandler::rollBack() {
    if (state_ == ORYNone) {
        return 0;
    }
    CString unitPath;
    CString toolPath;
    // Calls this class's version during destruction. NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall)
    getUnitPath(unitPath, toolPath);
    int result = 1;
    if (areTwoFiles(unitPath, toolPath) && oqFileExist(toolPath)) {
        result = oqDeleteFile(toolPath, 1);
    }
    if (result == 1) {
        state_ = ORYNone;
    }
    return result;
}
