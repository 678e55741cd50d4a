// The project file NAME.orp: a few lines of text, one fact a line.
//
//     orchard-project 1
//     units Pump_ory
//     component 0f3c...
//     configuration 91aa...
//     stub 77b0...
//     state 5c1e... 4099
//
// "units" names the units directory, beside the project file. The active component and configuration may be left
// out; each "stub" line names a unit that this user does not want loaded, each "state" line a unit with the state
// under configuration management that it was last known to have, if that is not 0.
#pragma once

#include "orchard/model/ElementId.h"
#include "orchard/storage/FileText.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orchard {

struct ProjectFile {
    std::string unitsDirectory; ///< a name, without directory
    ElementId component;
    ElementId configuration;
    std::vector<ElementId> stubs;
    std::vector<std::pair<ElementId, long>> states;

    [[nodiscard]] bool parse(std::string_view text, Fault &fault);
    [[nodiscard]] std::string text() const;
};

/// The name of the units directory that goes with a project: "Pump_ory" for "Pump".
[[nodiscard]] std::string unitsDirectoryName(std::string_view project);

} // namespace orchard
