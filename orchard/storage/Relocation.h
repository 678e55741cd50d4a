// Gives units another name or owner: in the model, in their files and in the files of the owners.
#pragma once

#include "orchard/storage/FileMoves.h"
#include "orchard/storage/UnitChangeWork.h"

#include <string>
#include <utility>
#include <vector>

namespace orchard {

class Relocation final : public UnitChange::Work {
  public:
    /// A unit and its intended data. apply() swaps this data with that of the unit.
    struct Target {
        UnitElement *unit;
        std::string name;
        std::string fileName;
        std::string directory;
    };
    /// `newOwner` is null if the owners stay the same.
    Relocation(Model &model, std::vector<Target> targets, Element *newOwner);
    ~Relocation() override { cancel(); }

    void begin() override;
    void cancel() override;
    Problems finish(FilesBy by) override;

  private:
    struct Place {
        UnitElement *unit;
        std::string from;
        std::string to;
        std::optional<std::size_t> directory; ///< index in directories_
    };
    struct Directory {
        UnitElement *unit;
        std::string from;
        std::string to;
        std::size_t index = 0; ///< index in moves_
    };

    void plan();
    void findPlaces(UnitElement &unit, bool below);
    void findNewPlaces();
    void checkPlaces();
    void listFiles();
    void checkOwners();
    [[nodiscard]] std::vector<UnitElement *> topUnits() const;

    void exchangeFacts();
    void enterNewOwner();
    void returnToOwners();
    void apply();
    void revert();
    void markChanged();
    void takeBack(Problems &problems);
    void settleUnits(Problems &problems);
    [[nodiscard]] bool save(Problems &problems, bool canGoBack);

    Model &model_;
    std::vector<Target> targets_;
    Element *newOwner_;
    struct FormerOwner {
        Element *owner;
        std::vector<std::pair<std::size_t, Element *>> places; ///< of the children that left it, in order
    };
    std::vector<FormerOwner> formerOwners_;
    std::vector<Place> places_;
    std::vector<Directory> directories_;
    std::vector<std::pair<UnitElement *, std::string>> elsewhere_; ///< swapped along with the targets' data
    std::vector<UnitElement *> listing_;                           ///< units whose files list what changes
    std::vector<std::pair<Element *, bool>> formerlyModified_;
    FileMoves moves_;
};

} // namespace orchard
