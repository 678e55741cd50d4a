// Fills the names that a move or a rename needs into its template, for a sample unit.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

#include <string_view>

namespace orchard_cm {

/// Returns the template of a move or rename with these names filled in, and that of any other command unchanged.
/// `renameTemplate` is the value of "Rename".
CString withPlaces(CString text, std::string_view key, const CString &renameTemplate, const IUnit &unit);

} // namespace orchard_cm
