// Units on disk, for the model.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/Problem.h"

#include <mutex>
#include <string>
#include <unordered_set>

namespace orchard {

class DiskStorage final : public UnitStorage {
  public:
    /// The header of the file that is written over is kept; a new file gets the unit's, or the default one. The
    /// directory of the unit's own file is made if need be.
    bool save(UnitElement &unit, const std::string &path, std::string &error) override;
    bool readHeader(const UnitElement &unit, std::string &header, bool quietly) override;

  private:
    std::mutex mutex_;                       ///< several files may be read at the same time
    std::unordered_set<std::string> toldOf_; ///< the files whose header could not be read, as the user knows
};

/// Why the unit's own file can't be written now, in words that end a sentence; empty if it can.
[[nodiscard]] std::string faultOfSaving(const UnitElement &unit);
/// Writes the unit's own file and clears the modified flags of what is in it. On failure the file and the flags
/// stay, and a problem is added.
bool saveOwnFile(UnitElement &unit, Problems &problems);

} // namespace orchard
