// CheckoutResult: what a check out did to one file and its unit. The library's own return value speaks of the last
// item only; this tells the truth about each.
#pragma once

#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/checkout/FilePicture.h"
#include "apps/orchard-cm/model/Journal.h"

#include <ostream>
#include <string>
#include <vector>

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

struct CheckoutResult {
    enum class Outcome { done, skipped, failed };

    std::string name; ///< path in the model; the file for an item that the model did not know
    std::string file;
    ItemState before;
    ItemState after;
    Outcome outcome = Outcome::failed;
    std::string reason; ///< why it is not done
};

Json toJson(const CheckoutResult &result);
/// "Drives/Pump: checked out, version 1.2 -> 1.3, RO -> RW, reloaded".
void write(std::ostream &out, const CheckoutResult &result);

/// What is known of an item from the journal.
struct ItemRun {
    const JournalRun *run = nullptr; ///< null if no tool ran for it
    bool asked = false;              ///< whether there was a question about it
};

/// Which run and which question belong to which of the files, given in the order in which the operation took them.
/// A run is that of the next file whose name stands in its command.
std::vector<ItemRun> itemRuns(const std::vector<std::string> &files, const Journal &journal);

/// Judges an item whose states are filled in. One that was asked about and for which no tool ran counts as
/// skipped; without a question it is failed, and the reason is left to the caller.
void judge(CheckoutResult &result, const ItemRun &itemRun, bool lock);

} // namespace orchard_cm
