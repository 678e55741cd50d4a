#include "CM/CMSupport/core/CMORYHandler.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/CMSupport/core/Quietly.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/Utilities.h"
#include "CM/platform/Files.h"

#include <utility>

namespace {

constexpr int replaceAndAllowCopy = 3; // flags of oqMoveFileEx

IProject *openProject() {
    return CurrentProject::Project() == nullptr ? nullptr : CurrentWorkspace::GetActiveProject();
}

/// By the property alone: whether a provider could be found doesn't matter here.
bool isCommandRoute(const IProject &project) {
    const IProperty *const property =
        project.findProperty(IPN::CM, IPN::General, "UseSCCtool", IProperty::inherited);
    return property == nullptr || property->getValue().CompareNoCase("Yes") != 0;
}

/// Whether a file of the tool stands apart from the unit's. One place under two spellings, by way of a link, holds
/// the only copy, which must be neither moved nor removed.
bool areApart(const CString &unitPath, const CString &toolPath) {
    return unitPath != toolPath && !platform::sameFile(paths::directoryOf(unitPath), paths::directoryOf(toolPath));
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
    return extension.CompareNoCase(IProject::staticGetNewFileExtension()) == 0 ||
           extension.CompareNoCase(IProject::staticGetOldFileExtension()) == 0;
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
    if (isProjectFile() && isCommandRoute(*project) && CMProperty::isPre40Compatible()) {
        toolPath = paths::join(project->getProjectFileDirectory(), file);
    }
}

bool CMORYHandler::doPreTransValidation(CString &unitPath, CString &toolPath) {
    getUnitPath(unitPath, toolPath);
    return isProjectFile() && areApart(unitPath, toolPath);
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
    return platform::copyFile(unitPath, toolPath, false) ? 1 : 0; // stays open if it failed, deliberately
}

int CMORYHandler::commit() {
    if (state_ == ORYNone) {
        return 0;
    }
    CString unitPath;
    CString toolPath;
    getUnitPath(unitPath, toolPath);
    int result = 1;
    if (areApart(unitPath, toolPath)) {
        const bool toolHasFile = oqFileExist(toolPath);
        if (state_ == ORYInspect) {
            if (toolHasFile) {
                platform::makeWritable(toolPath);
                result = oqDeleteFile(toolPath, 1);
            }
        } else if (platform::sameFile(toolPath, unitPath)) {
            // A link that the tool works through: moved over the file it leads to, it would lead nowhere.
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
    // The handler's own where it is being destroyed. NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall)
    getUnitPath(unitPath, toolPath);
    int result = 1;
    if (areApart(unitPath, toolPath) && oqFileExist(toolPath)) {
        result = oqDeleteFile(toolPath, 1);
    }
    if (result == 1) {
        state_ = ORYNone;
    }
    return result;
}
