// Units that go, with their files.
#pragma once

#include "orchard/storage/UnitChangeWork.h"

#include <string>
#include <vector>

namespace orchard {

class Removal final : public UnitChange::Work {
  public:
    Removal(Model &model, std::vector<UnitElement *> tops);

    /// A tool has to be told of the units while they are there, so they go at the end.
    void begin() override {}
    void cancel() override { phase_ = Phase::over; }
    Problems finish(FilesBy by) override;

  private:
    struct File {
        UnitElement *unit;
        std::string path;
        std::size_t top; ///< which of tops_ it lies in or is
    };
    void findFiles(std::size_t top);
    void checkOwners();
    void leaveOutUntouched(Problems &problems);
    [[nodiscard]] bool takeOut(Problems &problems);
    void removeFiles(Problems &problems) const;

    Model &model_;
    std::vector<UnitElement *> tops_;
    std::vector<bool> stays_; ///< of tops_: not to go after all
    std::vector<File> found_;
    std::vector<std::string> directories_; ///< the units' own, outer ones first
    std::vector<std::unique_ptr<Element>> gone_;
};

} // namespace orchard
