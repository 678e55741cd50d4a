// Gives units another name or owner: in the model, in their files and in the files of the owners.
#pragma once

#include "orchard/change/UnitChangeWork.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orchard {

class Relocation final : public UnitChange::Work {
  public:
    /// A unit with its intended data.
    struct Target {
        UnitElement *unit;
        std::string name;
        std::string fileName;
        std::string directory;
    };
    /// `newOwner` is null if the owners stay the same.
    Relocation(Model &model, std::vector<Target> targets, Element *newOwner);
    ~Relocation() override { cancel(); }
    Relocation(const Relocation &) = delete;
    Relocation &operator=(const Relocation &) = delete;

  private:
    struct Place : ChangePlan::File {
        UnitElement *unit;
    };
    struct Directory : ChangePlan::Path {
        UnitElement *unit;
    };
    void findPlaces(const Target &target, std::vector<Directory> &directories, std::vector<Place> &places);
    void listFiles(const std::vector<Directory> &directories, const std::vector<Place> &places);
    void checkPlaces(const std::vector<Place> &places);
    void planTexts(const std::vector<Place> &places);

    void apply() override;
    void revert() override;
    void settle(const Decision &decision, FilesBy by) override;
    void exchangeFacts();
    void enterNewOwner();
    void returnToOwners();
    void markChanged();
    [[nodiscard]] std::vector<UnitElement *> topUnits() const;

    std::vector<Target> targets_;
    Element *newOwner_;
    /// The data that change, exchanged with those of the units: of the targets, and of units kept elsewhere.
    std::vector<std::pair<UnitElement *, Intention::Facts>> facts_;
    struct FormerOwner {
        Element *owner;
        std::vector<std::pair<std::size_t, Element *>> places; ///< of the children that left it, in order
    };
    std::vector<FormerOwner> formerOwners_;
    std::vector<std::pair<Element *, bool>> formerlyModified_;
};

} // namespace orchard
