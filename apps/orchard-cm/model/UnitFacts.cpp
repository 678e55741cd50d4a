#include "apps/orchard-cm/model/UnitFacts.h"

#include "CM/CMSupport/core/CMTraitFacade.h"
#include "orchard/storage/UnitSearch.h"

namespace orchard_cm {

UnitFacts factsOf(const IUnit &unit) {
    const orchard::UnitRow row = orchard::unitRow(unit);
    return {row.name,
            row.path,
            row.type,
            unit.getFullFileName().str(),
            orchard::unitStateText(row.state),
            CMTraitFacade::getVersion(&unit).str(),
            CMTraitFacade::getLocker(&unit).str()};
}

Json toJson(const UnitFacts &facts) {
    Json json = {{"name", facts.name},
                 {"path", facts.path},
                 {"type", facts.type},
                 {"file", facts.file},
                 {"state", facts.state}};
    if (!facts.version.empty()) {
        json["version"] = facts.version;
    }
    if (!facts.locker.empty()) {
        json["locker"] = facts.locker;
    }
    return json;
}

} // namespace orchard_cm
