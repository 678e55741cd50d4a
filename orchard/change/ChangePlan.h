// Describes a change of units and their files as a value: which files go where, which unit files get which text,
// and what a CM tool is to do. Its text is beside the project file for as long as the change is under way, so that
// the change can be finished or taken back after a crash:
//
//     orchard-change 1
//     command rename Valve Gate
//     tool Pump_ory/Valve.ocl
//     to Pump_ory/Gate.ocl
//     file Pump_ory/Valve.ocl
//     to Pump_ory/Gate.ocl
//     text Pump_ory/Drives.osb
//     -...each line of the file before the change
//     +...each line of it after the change
//     end
//
// Paths are relative to the directory of the project file.
#pragma once

#include "orchard/storage/UnitWriter.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

struct ChangePlan {
    /// A file or directory with its full path before and after; `to` is empty if it is to be removed.
    struct Path {
        std::string from;
        std::string to;
    };
    struct File : Path {
        std::optional<std::size_t> directory; ///< index of the directory that it moves with
        std::size_t part = 0;
    };
    struct Text : Path {
        bool own = false;   ///< of a unit that changes, not of one that lists it
        std::string before; ///< empty if there was no file
        std::string after;
        std::vector<Cut> cuts;
        /// Returns the text after the units in `chosen` are done.
        [[nodiscard]] std::string with(const std::vector<bool> &chosen) const;
    };

    std::string command;                 ///< what the user asked for; may be empty
    bool removes = false;                ///< files are removed, not moved
    std::size_t parts = 1;               ///< the units that can be removed one without the other
    std::vector<Path> toolSteps;         ///< what the tool is to move or remove; empty if no tool takes part
    std::vector<Path> directories;       ///< that move as one
    std::vector<File> files;             ///< only existing files
    std::vector<Text> texts;             ///< in the order of writing
    std::vector<std::string> mayBeEmpty; ///< to be removed, if empty: after a removal, or if a move is taken back

    [[nodiscard]] std::string text(const std::string &base) const;
    /// Returns false if this is not the complete text of a plan.
    [[nodiscard]] bool parse(std::string_view text, const std::string &base);
};

} // namespace orchard
