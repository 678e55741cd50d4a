// Detects units whose code files are saved with another unit, so that a dialog can offer to include these files.
#pragma once

#include "CM/host/IProject.h"

#include <optional>
#include <unordered_set>

/// Returns whether a code file that observes the unit is saved with a different unit. For a subsystem, also
/// returns true if a code file with the subsystem's name shows elements of the subsystem, no matter with which
/// unit that file is saved.
bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component);

/// Applies this rule to many units. Searches the component once, when first needed; the model must not change in
/// the meantime.
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
