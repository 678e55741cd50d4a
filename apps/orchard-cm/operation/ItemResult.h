// Defines ItemResult: what an operation did to one file and its unit, as the user sees it.
#pragma once

#include "apps/orchard-cm/base/Output.h"

#include <ostream>
#include <string>
#include <vector>

namespace orchard_cm {

/// The state of a unit, or of a file of the archive, at one moment.
struct ItemState {
    bool exists = false;   ///< whether the file exists
    bool writable = false; ///< by the owner's permission bit
    bool inModel = false;
    std::string version; ///< empty if unknown
    std::string state;   ///< "U", "RO" or "RW"; empty if not in the model
    std::string locker;
    const void *object = nullptr; ///< the model object, only for comparison
};

struct ItemResult {
    enum class Outcome {
        done,
        passedOver, ///< it was before as the operation would make it
        skipped,    ///< the user did not agree
        failed,
        notBegun, ///< the operation ended before it came to the item
    };

    std::string name; ///< path in the model; the file for an item that was not in the model
    std::string file;
    std::string newFile; ///< where the unit's file is now, if the operation gave it another name
    std::string newName; ///< path in the model, if it has changed
    ItemState before;
    ItemState after;
    bool fileChanged = false;
    bool reloaded = false; ///< whether the unit was read again
    Outcome outcome = Outcome::failed;
    std::string reason; ///< why it is not done, or a remark on an item that is done
    std::string output; ///< the tool's output, if that is the purpose of the operation
};

/// How the result of an operation is reported.
struct Wording {
    const char *done;         ///< for an item that succeeded: "checked out"
    bool showsContent = true; ///< whether a changed file, and what the model holds of it, is reported
    bool showsState = true;   ///< whether version, mode and locker are reported
};

Json toJson(const ItemResult &result, const Wording &wording);
/// Writes a line such as "Drives/Pump: checked out, file changed, version 1.2 -> 1.3, RO -> RW, reloaded".
void write(std::ostream &out, const ItemResult &result, const Wording &wording);
/// Writes a line for each item, and one for all that were not begun.
void write(std::ostream &out, const std::vector<ItemResult> &results, const Wording &wording);

/// What must be true of an item after a successful run.
struct Expectation {
    bool file = true; ///< the file exists
    bool writable = false;
    bool unit = true; ///< a unit that was in the model is still there
};

/// Returns how the item differs from what is expected; empty if it does not.
std::string unmet(const Expectation &expected, const ItemResult &result);

} // namespace orchard_cm
