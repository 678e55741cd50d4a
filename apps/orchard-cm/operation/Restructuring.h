// Renames, moves or removes units, and brings model, files and archive to the same state.
#pragma once

#include "apps/orchard-cm/operation/Operation.h"
#include "orchard/storage/UnitChange.h"

#include <functional>
#include <string>
#include <vector>

namespace orchard_cm {

struct Restructuring {
    Wording wording;
    const char *infinitive; ///< "rename"
    CString key;            ///< of the template that the tool needs for the operation
    bool withTool = true;   ///< false: the archive is not changed
    /// Runs the facade's entry between the two halves of the change.
    std::function<int(orchard::UnitChange &, CMArgumentList &, CMDiagnosticList &)> entry;
};

/// Carries out the change for the units that the user named. Throws a Failure, with nothing changed, if it can't
/// be done. If something fails later, the item reports the state of model and file.
OperationReport restructure(Context &context, orchard::UnitChange change, const std::vector<IUnit *> &units,
                            const Restructuring &how);

} // namespace orchard_cm
