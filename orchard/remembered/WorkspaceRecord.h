// Holds the data of a workspace list as one text, with the states of all files from which it was made:
//
//     the mark of the format and of the program's version, a hash of what follows
//     the project file and its state
//     the units that must be loaded before properties can be looked up
//     for each unit: kind, state, names, header, and the state of its file
#pragma once

#include "orchard/model/ElementId.h"
#include "orchard/model/ElementKind.h"
#include "orchard/model/FileState.h"
#include "orchard/remembered/RecordText.h"
#include "orchard/storage/Projects.h"
#include "orchard/storage/UnitSearch.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

class IProject;

namespace orchard {

/// One unit of a record; the texts are views into the record.
struct RecordedUnit {
    Kind kind = Kind::project;
    UnitState state = UnitState::unloaded;
    std::string_view name;
    std::string_view path; ///< as in UnitRow
    std::string_view file; ///< as in UnitRow
    std::string_view header;
    FileState fileState; ///< unknown for a unit that the user has chosen not to load
};

class WorkspaceRecord {
  public:
    /// Makes the record of a project whose opening began at `openedAt`. Returns nothing if the project can't be
    /// restored from its files: if one is missing or broken, if something is modified, or if a file was changed so
    /// shortly before the opening that a later change could have the same time.
    [[nodiscard]] static std::optional<WorkspaceRecord> of(const IProject &project,
                                                           std::chrono::system_clock::time_point openedAt);
    /// Reads a record from its text; returns nothing if the text is damaged or of another format.
    [[nodiscard]] static std::optional<WorkspaceRecord> from(std::string text);

    [[nodiscard]] const std::string &text() const { return text_; }
    [[nodiscard]] std::string_view projectFile() const { return projectFile_; }
    [[nodiscard]] const std::unordered_set<ElementId> &needed() const { return needed_; }
    /// Whether the project file and the files of all units are unchanged. Progress and cancelling as in opening;
    /// false when cancelled.
    [[nodiscard]] bool isUpToDate(const OpenOptions &options) const;

    /// Visits the units in model order; false from `visit` stops it and is returned.
    template <class VISIT> bool visitUnits(VISIT &&visit) const {
        RecordReader reader(units());
        for (std::uint64_t left = unitCount_; left > 0; --left) {
            if (!visit(nextUnit(reader))) {
                return false;
            }
        }
        return true;
    }

  private:
    explicit WorkspaceRecord(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] bool readHead();
    [[nodiscard]] std::string_view units() const { return std::string_view(text_).substr(unitsAt_); }
    [[nodiscard]] static RecordedUnit nextUnit(RecordReader &reader);

    std::string text_;
    std::string projectFile_;
    FileState projectState_;
    std::string unitsDirectory_;
    std::unordered_set<ElementId> needed_;
    std::uint64_t unitCount_ = 0;
    std::size_t unitsAt_ = 0;
};

} // namespace orchard
