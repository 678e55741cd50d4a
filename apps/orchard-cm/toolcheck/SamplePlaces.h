// SamplePlaces: the names that a move or a rename replaces in its template by hand, before anything is expanded.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

#include <string_view>

namespace orchard_cm {

/// The template of a move or rename with these names filled in for a sample unit; that of any other command as it
/// is. Each command knows names of its own, with their capitals; `renameTemplate` decides on two of those of
/// "RenameDirectory".
CString withPlaces(CString text, std::string_view key, const CString &renameTemplate, const IUnit &unit);

} // namespace orchard_cm
