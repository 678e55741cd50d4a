// Runs a command with its record in the output, and reports its failures.
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <functional>
#include <optional>
#include <string_view>

namespace orchard_cm {

/// Runs `work`, writes its output as the record of the command `name`, and reports any exception. After Ctrl-C the
/// result is ExitCode::interrupted, whatever `work` returns.
ExitCode runRecorded(Output &output, std::string_view name, const std::optional<Place> &place,
                     const std::function<ExitCode()> &work);

} // namespace orchard_cm
