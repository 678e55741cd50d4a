// Removes units and their files.
#pragma once

#include "orchard/change/UnitChangeWork.h"

#include <vector>

namespace orchard {

class Removal final : public UnitChange::Work {
  public:
    Removal(Model &model, std::vector<UnitElement *> tops);
    ~Removal() override { cancel(); }
    Removal(const Removal &) = delete;
    Removal &operator=(const Removal &) = delete;

  private:
    void findFiles(std::size_t part);
    void planTexts();
    /// A tool must be given the units while they exist, so they are removed at the end.
    void settle(const Decision &decision, FilesBy by) override;

    std::vector<UnitElement *> tops_; ///< each a part of the plan
};

} // namespace orchard
