// Lets a program carry out the renamings of unit files that the library asks for, with a CM tool in between.
#pragma once

#include "orchard/OrchardApi.h"

#include <functional>
#include <string>

class IUnit;

namespace orchard {

/// While it exists, IUnit::setFileName() renames nothing in an open project: `take` gets the unit and the new file
/// name, to be carried out with UnitChange::renameFile(). One at a time.
class ORCHARD_API HeldRenamings {
  public:
    explicit HeldRenamings(std::function<void(IUnit &unit, const std::string &fileName)> take);
    ~HeldRenamings();
    HeldRenamings(const HeldRenamings &) = delete;
    HeldRenamings &operator=(const HeldRenamings &) = delete;
};

} // namespace orchard
