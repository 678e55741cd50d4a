#include "CM/CMSupport/command/CMListWorkspace.h"

#include "CM/host/IProject.h"
#include "CM/host/Iterators.h"

namespace {

bool isListed(const IUnit &unit) {
    if (unit.isReference() || dynamic_cast<const IWorkspace *>(&unit) != nullptr) {
        return false;
    }
    if (dynamic_cast<const IEmbededFile *>(&unit) != nullptr) {
        const IUnit *const holder = unit.getSaveUnit();
        return holder == nullptr || !holder->isReference();
    }
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(&unit);
    return subsystem == nullptr || !subsystem->isHiddenFromCM();
}

} // namespace

int CMListWorkspace::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                                bool /*hybrid*/) {
    units.RemoveAll();
    const IObjectList *const files = IUnit::getRepositoryFiles();
    if (files == nullptr) {
        return 1;
    }
    IUnitIterator walk(*files, 0);
    for (IUnit *unit = walk.first(); unit != nullptr; unit = walk.next()) {
        if (isListed(*unit)) {
            units.AddTail(unit);
        }
    }
    return 1;
}
