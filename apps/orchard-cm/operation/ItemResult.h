// ItemResult: what an operation did to one file and its unit. The library's own return value speaks of the last
// item only; this tells the truth about each.
#pragma once

#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/operation/FilePicture.h"
#include "apps/orchard-cm/operation/ItemRuns.h"

#include <ostream>
#include <string>

namespace orchard_cm {

/// A unit, or a file of the archive, at one moment.
struct ItemState {
    FilePicture file;
    bool inModel = false;
    std::string version; ///< empty if not known
    std::string state;   ///< "U", "RO" or "RW"; empty if not in the model
    std::string locker;
    bool isEmbedded = false;      ///< a file that goes with the model and is never read into it
    const void *object = nullptr; ///< the model object, only to be compared
};

struct ItemResult {
    enum class Outcome { done, skipped, failed };

    std::string name; ///< path in the model; the file for an item that the model did not know
    std::string file;
    std::string newFile; ///< where the unit's file stands now, if the operation gave it another name
    std::string newName; ///< path in the model, if it is another now
    ItemState before;
    ItemState after;
    Outcome outcome = Outcome::failed;
    std::string reason; ///< why it is not done, or what is to be known of one that is
    std::string output; ///< what the tool wrote, for an operation that is there for it
};

/// How an operation is told.
struct Wording {
    const char *done;         ///< of an item that went well: "checked out"
    bool tellsContent = true; ///< whether it is told if the file has changed, and what the model holds of it
    bool tellsState = true;   ///< whether version, mode and locker are told
};

Json toJson(const ItemResult &result, const Wording &wording);
/// "Drives/Pump: checked out, version 1.2 -> 1.3, RO -> RW, reloaded".
void write(std::ostream &out, const ItemResult &result, const Wording &wording);

/// What has to be so after a run that went well.
struct Expectation {
    bool file = true; ///< the file is there
    bool writable = false;
    bool unit = true; ///< a unit that was in the model still is
};

/// Judges an item whose states are filled in. One that was asked about and for which no tool ran counts as
/// skipped; without a question it is failed, and the reason is left to the caller.
void judge(ItemResult &result, const ItemRun &itemRun, const Expectation &expected);

} // namespace orchard_cm
