// Reads one unit file into its element. Changes nothing in the model except that element and those created below
// it, so that several files can be read in parallel, each by its own reader.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/Problem.h"
#include "orchard/storage/UnitDocument.h"

#include <string>
#include <vector>

namespace orchard {

/// The result of reading one file.
struct UnitReading {
    enum Outcome {
        filled,
        unread,  ///< the file was not read
        missing, ///< there is no file
        refused, ///< the file can't be read, or contains something else
    };
    Outcome outcome = unread;
    Problem problem; ///< why it was refused
    std::vector<UnitElement *>
        listed; ///< the units with files of their own that the file lists, all of them stubs
};

/// Stores the state of the unit's file as found by a reading.
void takeFileState(UnitElement &unit, const FileText &file);

class UnitReader {
  public:
    explicit UnitReader(Model &model) : model_(model) {}

    /// Reads the unit's own file. If that fails, the unit is left as its owner's file describes it.
    [[nodiscard]] UnitReading read(UnitElement &unit);
    /// The same, with the text of the file given.
    [[nodiscard]] UnitReading fill(UnitElement &unit, const FileText &file);

  private:
    [[nodiscard]] UnitReading fill(UnitElement &unit, const FileText &file, const std::string &path);

    Model &model_;
    UnitDocument document_;
    FileText file_;
};

} // namespace orchard
