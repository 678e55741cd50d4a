// Units on disk, for the model.
#pragma once

#include "orchard/model/Model.h"

#include <string>

namespace orchard {

class DiskStorage final : public UnitStorage {
  public:
    /// The header of the file that is written over is kept; a new file gets the unit's, or the default one. The
    /// directory of the unit's own file is made if need be.
    bool save(UnitElement &unit, const std::string &path, std::string &error) override;
    std::optional<std::string> readHeader(const std::string &path) override;
};

} // namespace orchard
