#include "CM/CMSupport/dispatch/Providers.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IProject.h"

#include <algorithm>

namespace dispatch {

bool isProviderNamed(std::string_view name) {
    CString provider;
    CMProperty::getSCCToolName(provider);
    return provider.CompareNoCase(name) == 0;
}

bool isHybridMode() { return CMProperty::isHybridModePossible() && isProviderNamed(basalt); }

bool holdsDirectory(const CMUnitList &units) {
    return std::any_of(units.begin(), units.end(), [](const IUnit *unit) {
        const auto *const subsystem = dynamic_cast<const ISubsystem *>(unit);
        return subsystem != nullptr && !subsystem->getPersistAs().IsEmpty();
    });
}

} // namespace dispatch
