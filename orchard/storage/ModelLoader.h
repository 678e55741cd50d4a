// Reads unit files into elements: one, and all that it lists.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/ReadAhead.h"

#include <functional>
#include <string>
#include <vector>

namespace orchard {

class ModelLoader {
  public:
    ModelLoader(Model &model, const OpenOptions &options) : model_(model), options_(options) {}

    // Called on the caller's thread, in the order in which files list units, whatever is read ahead.
    /// Asked for each unit that a file lists, before its file is read; false leaves it a stub.
    std::function<bool(UnitElement &)> wanted;
    /// Asked for each listed unit whose file is missing; true if it is looked after, and there is no warning.
    std::function<bool(UnitElement &)> missing;
    /// Asked for each listed unit whose file can't be read or holds something else, with what is wrong; true
    /// leaves it a stub, and there is no problem.
    std::function<bool(UnitElement &, const Problem &)> broken;
    /// Told of each element once it stands whole; what it answers is a fault of the element ("" for none).
    std::function<std::string(Element &)> admit;

    /// Reads the file of `unit` into it, then those of the units that it lists, and so on. All files are read,
    /// also behind a broken one. A listed unit whose file is missing stays a stub, with a warning.
    /// False if anything was wrong (see problems()) or if the reading was cancelled.
    bool load(UnitElement &unit);
    /// The same where the text of the unit's own file is known already.
    bool load(UnitElement &unit, const FileText &text);

    [[nodiscard]] Problems &problems() { return problems_; }
    [[nodiscard]] bool cancelled() const { return cancelled_; }

  private:
    bool run(UnitElement &unit, const FileText *known);
    void take(UnitElement &unit, UnitReading reading);
    [[nodiscard]] bool looksAfterMissing(UnitElement &unit);
    [[nodiscard]] bool staysUnloaded(UnitElement &unit, UnitReading &reading);
    [[nodiscard]] bool admitContent(UnitElement &unit);
    [[nodiscard]] Problem problemOf(const UnitElement &unit, const Element &element, std::string why) const;
    [[nodiscard]] bool tellAndAsk(std::size_t done);

    Model &model_;
    const OpenOptions &options_;
    Problems problems_;
    bool cancelled_ = false;
    // While it runs:
    UnitElement *first_ = nullptr;
    const FileText *known_ = nullptr; ///< the text of the first one's file, if that was known
    ReadAhead *ahead_ = nullptr;
    std::vector<Element *> open_; ///< its memory is reused
};

/// What the user is told of a unit that stays a stub because of what is wrong with its file.
[[nodiscard]] Problem unloadedFor(const UnitElement &unit, Problem problem);

} // namespace orchard
