// Which of the tool's runs, and which questions, belong to which item of an operation.
#pragma once

#include "apps/orchard-cm/model/Journal.h"

#include <string>
#include <vector>

namespace orchard_cm {

/// What is known of an item from the journal.
struct ItemRun {
    std::vector<const JournalRun *> runs; ///< empty if no tool ran for it
    bool asked = false;                   ///< whether there was a question about it
};

struct RunsOfItems {
    std::vector<ItemRun> items;
    std::vector<const JournalRun *> shared; ///< those that belong to none of them, such as one for a directory
};

/// The files are given in the order in which the operation took them. A run is that of the next file whose name
/// stands in its command, or else of one before. Where no command names any file, they belong to the files by
/// their order.
RunsOfItems runsOfItems(const std::vector<std::string> &files, const Journal &journal);

} // namespace orchard_cm
