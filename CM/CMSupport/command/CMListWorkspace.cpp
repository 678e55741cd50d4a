#include "CM/CMSupport/command/CMListWorkspace.h"

#include "CM/CMSupport/core/RepositoryFiles.h"

int CMListWorkspace::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                                bool /*hybrid*/) {
    units.RemoveAll();
    IUnitIterator walk = walkRepositoryFiles();
    for (IUnit *unit = walk.first(); unit != nullptr; unit = walk.next()) {
        if (isRepositoryFileForCM(*unit)) {
            units.AddTail(unit);
        }
    }
    return 1;
}
