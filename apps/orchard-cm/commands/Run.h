// Running a command: its record in the output, and its failures told.
#pragma once

#include "apps/orchard-cm/commands/Command.h"

#include <functional>
#include <optional>
#include <string_view>

namespace orchard_cm {

/// Runs `work` as the record of the command called `name`, and tells a Failure or another exception that comes out
/// of it. After Ctrl-C the result is ExitCode::interrupted, whatever `work` gave back.
ExitCode runRecorded(Output &output, std::string_view name, const std::optional<Place> &place,
                     const std::function<ExitCode()> &work);

} // namespace orchard_cm
