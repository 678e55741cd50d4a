#include "CM/CMSupport/command/FollowUp.h"

namespace command {

void updateHeader(IUnit &unit) {
    unit.updateCMHeader(); // failing is allowed: UpdatingOperation.AHeaderThatCannotBeReadIsNoFailure
}

void updateMode(IUnit &unit) { unit.updateMode(""); }

} // namespace command
