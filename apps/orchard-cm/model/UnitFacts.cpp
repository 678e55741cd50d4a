#include "apps/orchard-cm/model/UnitFacts.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "orchard/storage/Projects.h"

namespace orchard_cm {

namespace {

/// What the tool's pattern `key` finds in the unit's header.
std::string fromHeader(const IUnit &unit, const CString &key) {
    const CString header = unit.getCMHeader();
    CString found;
    CString error;
    int wasSet = 0;
    if (header.IsEmpty() || CMProperty::ExtractByProperty(key, header, found, wasSet, error) == 0) {
        return {};
    }
    return found.str();
}

} // namespace

UnitFacts factsOf(const IUnit &unit) {
    const orchard::UnitRow row = orchard::unitRow(unit);
    return {row.name,
            row.path,
            row.type,
            unit.getFullFileName().str(),
            orchard::unitStateText(row.state),
            fromHeader(unit, IPN::CMHeaderItsVersion),
            fromHeader(unit, IPN::CMHeaderItsLocker)};
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
