// Providers that are told apart by name, and what their projects may leave to the command route.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"

#include <string_view>

namespace dispatch {

/// Leaves some operations to the command route, in hybrid mode.
inline constexpr std::string_view basalt = "Basalt";
/// Moves and deletes directories as a whole by itself.
inline constexpr std::string_view tessera = "Tessera";

/// Whether the provider in use has this name, in any case of letters.
[[nodiscard]] bool isProviderNamed(std::string_view name);
/// Whether the project allows hybrid mode and the provider has a use for it.
[[nodiscard]] bool isHybridMode();
/// Whether one of the units is a subsystem with a directory of its own.
[[nodiscard]] bool holdsDirectory(const CMUnitList &units);

} // namespace dispatch
