// Checkout: one of the four check-out operations of the library, run as a dialog of the host would run it, and
// told file by file.
#pragma once

#include "apps/orchard-cm/checkout/CheckoutResult.h"
#include "apps/orchard-cm/commands/Command.h"

#include <string>
#include <vector>

class IUnit;

namespace orchard_cm {

struct CheckoutOptions {
    bool lock = false;
    bool recursive = false; ///< the items hold all that lies below, and the model is brought into line afterwards
    std::string label;
};

/// What came of a check out.
struct CheckoutReport {
    std::vector<CheckoutResult> items; ///< in the order in which they were asked for
    bool good = false;                 ///< every item is done, no error was shown, and the library reports success
};

/// Checks units out by their files in the workspace.
CheckoutReport checkOutUnits(Context &context, const std::vector<IUnit *> &units, const CheckoutOptions &options);
/// Checks files out of the archive by their names there.
CheckoutReport checkOutFromArchive(Context &context, const std::vector<std::string> &names,
                                   const CheckoutOptions &options);

} // namespace orchard_cm
