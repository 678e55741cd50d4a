#include "CM/CMSupport/core/UnitFiles.h"

#include "CM/host/IProject.h"

bool hasOwnDirectory(const IUnit *unit) {
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(unit);
    return subsystem != nullptr && !subsystem->getPersistAs().IsEmpty();
}

bool isProjectFileExtension(const CString &extension) {
    return extension.CompareNoCase(IProject::staticGetNewFileExtension()) == 0 ||
           extension.CompareNoCase(IProject::staticGetOldFileExtension()) == 0;
}
