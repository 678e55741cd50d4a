// Reads a unit and everything below it, to replace another unit or to be added to the model.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/ModelLoader.h"

#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace orchard {

class SubtreeReading {
  public:
    /// `old` is the unit to be replaced; null if there is none.
    SubtreeReading(Model &model, UnitElement *old);

    /// Reads into an object that knows its future place. Returns false if anything is wrong (see takeProblems());
    /// the model is unchanged in either case.
    [[nodiscard]] bool read(UnitElement &fresh, const FileText &file);
    [[nodiscard]] Problems takeProblems() { return std::move(loader_.problems()); }
    [[nodiscard]] Problems takeWarnings() { return std::move(warnings_); }

    /// Moves units that are not read again from the old subtree, which is about to be deleted, to their places in
    /// the new one.
    void moveKeptUnits();

  private:
    [[nodiscard]] bool isOutside(const Element &element) const;
    [[nodiscard]] UnitElement *former(const Element &listed) const;
    [[nodiscard]] bool isWanted(UnitElement &listed);
    [[nodiscard]] bool keepsWithoutFile(UnitElement &listed);
    [[nodiscard]] bool staysUnloaded(UnitElement &listed, const Problem &problem);
    [[nodiscard]] bool keptUnitsFit();
    [[nodiscard]] std::string faultOf(Element &element);
    [[nodiscard]] std::string faultOfId(Element &element);
    [[nodiscard]] std::string faultOfFile(const UnitElement &unit);

    Model &model_;
    UnitElement *old_;
    OpenOptions options_;
    ModelLoader loader_;
    std::unordered_set<ElementId> ids_;     ///< of the elements read
    std::unordered_set<std::string> paths_; ///< of the units read
    /// Each listed unit, with the unit that takes its place.
    std::vector<std::pair<UnitElement *, UnitElement *>> kept_;
    Problems warnings_;
};

} // namespace orchard
