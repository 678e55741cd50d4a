// Restructuring: a rename, move or removal of units, with model, files and archive brought to the same state.
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
    CString key;            ///< of the template that the tool needs for it
    bool withTool = true;   ///< false: the archive is not told
    /// Runs the facade's entry between the two halves of the change.
    std::function<int(orchard::UnitChange &, CMArgumentList &, CMDiagnosticList &)> entry;
};

/// Carries the change out for the units, which are the ones that were asked for. Throws a Failure where it can't
/// be done; nothing has changed then. Of what went wrong later each item says which state model and file are in.
OperationReport restructure(Context &context, orchard::UnitChange change, const std::vector<IUnit *> &units,
                            const Restructuring &how);

} // namespace orchard_cm
