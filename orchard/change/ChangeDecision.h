// Decides what becomes of a change from what is found on disk. Touches no file.
//
// A change takes its steps in this order, each of which can be repeated:
//   1. write the plan beside the project file; create the directories that files move into
//   2. let the CM tool work, if one takes part
//   3. move the files that are not at their new places yet (a removal has no such step)
//   4. write the files of the owners, the former one first, then the units' own files
//   5. remove the files that are to be removed, and the directories that are empty then
//   6. remove the plan
// Taking back does 4 and 3 in reverse, then 6. A unit is thus listed by two files or by none, or has its file in
// neither place, only while the plan is there; and whatever is found then leads on to one of the two ends.
#pragma once

#include <cstddef>
#include <vector>

namespace orchard {

/// Where a file of the plan is.
enum class Found {
    oldPlace,
    newPlace,
    renamed, ///< with its new name in the old directory, which is to move yet
    carried, ///< with its old name in the new directory
    both,    ///< at both places, with the same content
    blocked, ///< at its old place; something else is at the new one
    nowhere, ///< at none of these; of a file that is to be removed: it is gone
};

struct Findings {
    struct File {
        Found found;
        std::size_t part = 0;
    };
    bool removes = false;
    bool byTool = false; ///< whether a tool takes part
    /// Whether the host is about to take the steps, so that files at their old places are as expected.
    bool goesOn = false;
    bool textWritten = false; ///< whether any text differs from the one before the change
    std::size_t parts = 1;
    std::vector<File> files;
};

struct Decision {
    bool finish = false;     ///< else the change is taken back
    bool begun = false;      ///< a file has moved or is gone already, so that there is no way back
    std::vector<bool> parts; ///< the parts to finish; the others stay as they are
};

/// A change that has got anywhere is finished: a tool can't be made to go back. One that has not is taken back. Of
/// several units to be removed by a tool, only those are removed of which the tool has removed a file.
[[nodiscard]] Decision decide(const Findings &findings);

} // namespace orchard
