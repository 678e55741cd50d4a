// Names this process, for messages that other users read.
#pragma once

#include <string>

namespace platform {

/// Returns "process 4711 of kim on host"; a user or host without a known name is left out.
[[nodiscard]] std::string describeThisProcess();

} // namespace platform
