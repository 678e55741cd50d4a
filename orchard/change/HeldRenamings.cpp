#include "orchard/change/HeldRenamings.h"

#include "orchard/model/Workspace.h"

#include <utility>

namespace orchard {

HeldRenamings::HeldRenamings(std::function<void(IUnit &unit, const std::string &fileName)> take) {
    Workspace::instance().takeRenaming = [take = std::move(take)](UnitElement &unit, const std::string &fileName) {
        take(unit.unit(), fileName);
    };
}

HeldRenamings::~HeldRenamings() { Workspace::instance().takeRenaming = nullptr; }

} // namespace orchard
