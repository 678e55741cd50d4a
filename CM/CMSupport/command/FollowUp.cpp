#include "CM/CMSupport/command/FollowUp.h"

namespace command {

void updateHeader(IUnit &unit) {
    unit.updateCMHeader(); // a file that can't be read leaves the header as it was, and is no failure here
}

void updateMode(IUnit &unit) { unit.updateMode(""); }

} // namespace command
