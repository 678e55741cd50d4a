// Provides what the program reports about a unit.
#pragma once

#include "CM/host/IUnit.h"
#include "apps/orchard-cm/base/Output.h"

#include <string>

namespace orchard_cm {

struct UnitFacts {
    std::string name;
    std::string path; ///< path in the model
    std::string type;
    std::string file;    ///< full file name
    std::string state;   ///< "U" not loaded, "RO" read-only, "RW" read-write
    std::string version; ///< from the unit's header; empty if the tool's pattern is missing or doesn't match
    std::string locker;  ///< likewise
};

UnitFacts factsOf(const IUnit &unit);
Json toJson(const UnitFacts &facts);

} // namespace orchard_cm
