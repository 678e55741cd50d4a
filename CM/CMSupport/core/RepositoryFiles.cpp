#include "CM/CMSupport/core/RepositoryFiles.h"

#include "CM/host/IProject.h"

bool isRepositoryFileForCM(const IUnit &unit) {
    if (unit.isReference() || dynamic_cast<const IWorkspace *>(&unit) != nullptr) {
        return false;
    }
    if (dynamic_cast<const IEmbededFile *>(&unit) != nullptr) {
        const IUnit *const holder = unit.getSaveUnit();
        // Without a save unit it is not in a reference. Test: StatusRefresh.AnEmbeddedFileThatNoUnitHoldsCounts.
        return holder == nullptr || !holder->isReference();
    }
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(&unit);
    return subsystem == nullptr || !subsystem->isHiddenFromCM();
}

IUnitIterator walkRepositoryFiles() {
    const IObjectList *const files = IUnit::getRepositoryFiles();
    return files == nullptr ? IUnitIterator(IObjectList()) : IUnitIterator(*files);
}
