// Reads and writes unit files for the model.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/Problem.h"

#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

namespace orchard {

class DiskStorage final : public UnitStorage {
  public:
    /// Keeps the header of the file that it overwrites; a new file gets the unit's header, or the default one.
    /// Creates the directory of the unit's own file if needed.
    bool save(UnitElement &unit, const std::string &path, std::string &error) override;
    bool readHeader(const UnitElement &unit, std::string &header, bool quietly) override;

  private:
    std::mutex mutex_; ///< several files may be read at the same time
    std::unordered_set<std::string>
        reportedFiles_; ///< files whose unreadable header was already reported to the user
};

/// Whether the file exists and its permission bits forbid writing.
[[nodiscard]] bool isWriteProtected(const std::string &path);
/// Returns why the unit's own file can't be written now, as a clause to be appended to a message; empty if it can.
[[nodiscard]] std::string faultOfSaving(const UnitElement &unit);
/// The header for the unit's file, which has the text `present` now (empty if there is none).
[[nodiscard]] std::string headerToWrite(const UnitElement &unit, std::string_view present);
/// Writes the unit's own file and clears the modified flags of what is in it. On failure, leaves the file and the
/// flags unchanged and adds a problem.
bool saveOwnFile(UnitElement &unit, Problems &problems);

} // namespace orchard
