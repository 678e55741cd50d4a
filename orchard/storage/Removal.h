// Removes units and their files.
#pragma once

#include "orchard/storage/UnitChangeWork.h"

#include <string>
#include <vector>

namespace orchard {

class Removal final : public UnitChange::Work {
  public:
    Removal(Model &model, std::vector<UnitElement *> tops);

    /// The units are removed only at the end, because the tool needs them.
    void begin() override {}
    void cancel() override { phase_ = Phase::over; }
    Problems finish(FilesBy by) override;

  private:
    struct File {
        UnitElement *unit;
        std::string path;
        std::size_t top; ///< index in tops_ of the unit that contains it or is it
    };
    void findFiles(std::size_t top);
    void checkOwners();
    void leaveOutUntouched(Problems &problems);
    [[nodiscard]] bool takeOut(Problems &problems);
    void removeFiles(Problems &problems) const;

    Model &model_;
    std::vector<UnitElement *> tops_;
    std::vector<bool> stays_; ///< for each of tops_, whether it is kept because the tool removed none of its files
    std::vector<File> found_;
    std::vector<std::string> directories_; ///< the units' own directories, outer ones first
    std::vector<std::unique_ptr<Element>> gone_;
};

} // namespace orchard
