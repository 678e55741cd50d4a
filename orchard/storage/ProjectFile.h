// Reads and writes the project file NAME.orp: a few lines of text, one fact per line.
//
//     orchard-project 1
//     units Pump_ory
//     component 0f3c...
//     configuration 91aa...
//     stub 77b0...
//     state 5c1e... 4099
//
// "units" names the units directory, which is beside the project file. The active component and configuration may
// be omitted. Each "stub" line names a unit that this user does not want loaded; each "state" line names a unit
// and its last known state under configuration management, unless that is 0.
#pragma once

#include "orchard/model/ElementId.h"
#include "orchard/storage/FileText.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orchard {

struct ProjectFile {
    std::string unitsDirectory; ///< a name without a directory
    ElementId component;
    ElementId configuration;
    std::vector<ElementId> stubs;
    std::vector<std::pair<ElementId, long>> states;

    [[nodiscard]] bool parse(std::string_view text, Fault &fault);
    [[nodiscard]] std::string text() const;
};

/// The name of a project's units directory: "Pump_ory" for "Pump".
[[nodiscard]] std::string unitsDirectoryName(std::string_view project);

} // namespace orchard
