// InformationFiles: whether units have code files that are kept with another unit, so that a command on the unit
// should offer to take these along.
#pragma once

#include "CM/host/IProject.h"

#include <optional>
#include <unordered_set>

/// Whether a file that observes the unit is kept with another unit than the unit's own; for a subsystem also
/// whether a file of the component that bears its name shows elements of it, whichever unit that file is kept
/// with.
bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component);

/// Answers for many units. The component is walked once, when it is first needed; the model must not change
/// meanwhile.
class InformationFiles {
  public:
    /// Reads the active project's component, its active configuration, and the property that turns the rule off.
    InformationFiles();

    /// The rule of shouldSetInformationFilesCheckBox.
    [[nodiscard]] bool holdFor(const IUnit *unit);

  private:
    friend bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component);
    explicit InformationFiles(const IComponent *component) : component_(component) {}

    [[nodiscard]] bool isFileNotMapped(const IUnit &unit);
    [[nodiscard]] bool isObservedFromElsewhere(const IUnit &unit) const;
    [[nodiscard]] bool isShownInFileOfItsName(const ISubsystem &subsystem);
    void addShownBy(const IFile &file);

    const IComponent *component_ = nullptr;                       ///< null: the rule is off
    std::optional<std::unordered_set<const ISubsystem *>> shown_; ///< those that a file of their name shows
};
