#include "CM/CMSupport/core/CMStatus.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/IUnit.h"

namespace {

using resources::Text;

constexpr long invalidState = -1;
constexpr long stateWithoutText = -3084;

/// The bits of the provider's status word that are read here.
enum Bit : unsigned long {
    controlled = 1,        ///< SCC_STATUS_CONTROLLED
    checkedOut = 2,        ///< SCC_STATUS_CHECKEDOUT: by this user
    checkedOutByOther = 4, ///< SCC_STATUS_OUTOTHER
    deleted = 64,          ///< SCC_STATUS_DELETED
    outByUser = 4096,      ///< SCC_STATUS_OUTBYUSER: by this user, somewhere
};

class State {
  public:
    explicit State(const IUnit &unit) : word_(static_cast<unsigned long>(unit.getCMState())) {}
    [[nodiscard]] bool has(Bit bit) const { return (word_ & bit) != 0; }

  private:
    unsigned long word_;
};

/// Indices into the host's status images.
enum Image { elsewhereOrUnknown = 0, notControlled = 1, notOut = 2, outToOther = 4, outToUser = 5, gone = 6 };

} // namespace

bool CMStatus::getIsInvalid(const IUnit *unit) { return unit->getCMState() == invalidState; }

CString CMStatus::getCheckedOut(const IUnit *unit) {
    const State state(*unit);
    if (!state.has(controlled) || state.has(deleted)) {
        return {};
    }
    if (state.has(checkedOut)) {
        return resources::text(Text::statusCheckedOut);
    }
    if (state.has(checkedOutByOther)) {
        return resources::text(Text::statusCheckedOutByOther);
    }
    return resources::text(state.has(outByUser) ? Text::statusCheckedOutElsewhere : Text::statusNotCheckedOut);
}

CString CMStatus::getControlled(const IUnit *unit) {
    if (unit->getCMState() == stateWithoutText) {
        return {};
    }
    const State state(*unit);
    if (!state.has(controlled)) {
        return resources::text(Text::statusNotControlled);
    }
    return resources::text(state.has(deleted) ? Text::statusDeleted : Text::statusControlled);
}

int CMStatus::getCMStatusImgIndex(const IUnit *unit) {
    // Required: the bits decide only for an invalid state, or while states are not displayed.
    if (!getIsInvalid(unit) && CMProperty::getShowCMStatus() != 0) {
        return elsewhereOrUnknown;
    }
    const State state(*unit);
    if (!state.has(controlled)) {
        return notControlled;
    }
    if (state.has(deleted)) {
        return gone;
    }
    if (state.has(checkedOut)) {
        return outToUser;
    }
    if (state.has(checkedOutByOther)) {
        return outToOther;
    }
    return state.has(outByUser) ? elsewhereOrUnknown : notOut;
}
