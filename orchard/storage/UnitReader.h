// Reads one unit file into its element. Nothing of the model but that element and what is made below it is
// changed, so that several files can be read at the same time, each by a reader of its own.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/Problem.h"
#include "orchard/storage/UnitDocument.h"

#include <string>
#include <vector>

namespace orchard {

/// What came of one file.
struct UnitReading {
    enum Outcome {
        filled,
        unread,  ///< nothing was asked of the file
        missing, ///< there is no file
        refused, ///< the file can't be read, or holds something else
    };
    Outcome outcome = unread;
    Problem problem;                   ///< why it was refused
    std::vector<UnitElement *> listed; ///< the units with files of their own that the file lists, all stubs
};

class UnitReader {
  public:
    explicit UnitReader(Model &model) : model_(model) {}

    /// Reads the unit's own file. Unless the unit is filled, it is afterwards what its owner's file says of it.
    [[nodiscard]] UnitReading read(UnitElement &unit);
    /// The same where the text of the file is known already.
    [[nodiscard]] UnitReading fill(UnitElement &unit, const FileText &file);

  private:
    [[nodiscard]] UnitReading fill(UnitElement &unit, const FileText &file, const std::string &path);

    Model &model_;
    UnitDocument document_;
    FileText file_;
};

} // namespace orchard
