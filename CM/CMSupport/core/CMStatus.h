// Describes a unit's stored CM state in words and as an image. The state is the status word of the provider
// (IUnit::getCMState), so it is meaningful only on the provider route. The unit must not be null.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"

class IUnit;

class ORC_CM_API CMStatus {
  public:
    CMStatus() = delete;

    /// Returns whether the state is the invalid one, -1.
    [[nodiscard]] static bool getIsInvalid(const IUnit *unit);
    /// Returns who has the unit checked out, in words; empty for a unit that is not controlled or is deleted.
    [[nodiscard]] static CString getCheckedOut(const IUnit *unit);
    /// Returns in words whether the unit is controlled; empty for the special state -3084.
    [[nodiscard]] static CString getControlled(const IUnit *unit);
    /// Returns an index into the host's status images, 0 to 6. As required, returns 0 for every valid state while
    /// states are shown; only otherwise does the state decide.
    [[nodiscard]] static int getCMStatusImgIndex(const IUnit *unit);
};
