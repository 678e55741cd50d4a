// The boxes that the user has turned off for good: a file of the user's, one line "BUTTON KEY" a box.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace orchard {

/// The button that ended the box when it was turned off, or no value for a box that is still shown.
ORCHARD_API std::optional<int> hiddenMessageAnswer(std::string_view key);
/// Turns a box off. A file that can't be written is told in the log; the box is shown again then.
ORCHARD_API void hideMessage(std::string_view key, int button);
/// "hidden-messages" in the user's configuration directory.
ORCHARD_API std::filesystem::path hiddenMessagesFile();

} // namespace orchard
