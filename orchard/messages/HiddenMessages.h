// Remembers the boxes that the user has turned off for good, in a file of the user with a line "BUTTON KEY" for
// each box.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace orchard {

/// Returns the button that ended the box when it was turned off, or no value for a box that is still shown.
ORCHARD_API std::optional<int> hiddenMessageAnswer(std::string_view key);
/// Turns a box off. If the file can't be written, this is logged, and the box is still shown in future.
ORCHARD_API void hideMessage(std::string_view key, int button);
/// Returns the path of "hidden-messages" in the user's configuration directory.
ORCHARD_API std::filesystem::path hiddenMessagesFile();

} // namespace orchard
