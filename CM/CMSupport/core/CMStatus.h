// CMStatus: a unit's stored state under configuration management, as texts and as an image. The state is the
// status word of the provider (IUnit::getCMState), so it says something on the provider route only. The unit must
// not be null.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"

class IUnit;

class ORC_CM_API CMStatus {
  public:
    CMStatus() = delete;

    /// Whether the state is the invalid one, -1.
    [[nodiscard]] static bool getIsInvalid(const IUnit *unit);
    /// Who has the unit checked out, in words; empty for a unit that is not controlled or is deleted.
    [[nodiscard]] static CString getCheckedOut(const IUnit *unit);
    /// Whether the unit is controlled, in words; empty for the state -3084.
    [[nodiscard]] static CString getControlled(const IUnit *unit);
    /// An index into the host's status images, 0 to 6.
    [[nodiscard]] static int getCMStatusImgIndex(const IUnit *unit);
};
