// Detects units that have code files saved with another unit. A command on such a unit offers to include these
// files.
#pragma once

#include "CM/host/IProject.h"

#include <optional>
#include <unordered_set>

/// Returns whether a file that observes the unit is saved with a different unit than the unit itself. For a
/// subsystem, also returns true if a file of the component that has its name shows elements of it, whichever unit
/// that file is saved with.
bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component);

/// Applies the rule to many units. The component is searched once, when first needed; the model must not change
/// meanwhile.
class InformationFiles {
  public:
    /// Reads the active project's component, its active configuration, and the property that can turn the rule
    /// off.
    InformationFiles();

    /// Applies the rule of shouldSetInformationFilesCheckBox.
    [[nodiscard]] bool holdFor(const IUnit *unit);

  private:
    friend bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component);
    explicit InformationFiles(const IComponent *component) : component_(component) {}

    [[nodiscard]] bool isFileNotMapped(const IUnit &unit);
    [[nodiscard]] bool isObservedFromElsewhere(const IUnit &unit) const;
    [[nodiscard]] bool isShownInFileOfItsName(const ISubsystem &subsystem);
    void addShownBy(const IFile &file);

    const IComponent *component_ = nullptr; ///< null: the rule is off
    std::optional<std::unordered_set<const ISubsystem *>>
        shown_; ///< the subsystems shown by a file with their name
};
