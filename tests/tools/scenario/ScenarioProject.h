// Provides the sample model under one tool, with names that a test chooses, and runs orchard-cm on it.
#pragma once

#include "tests/tools/scenario/Adapter.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace scenario {

/// What the units that the scenario works on are called. Files are named after their units.
struct Names {
    std::string project = "station";
    std::string pump = "Pump";                 ///< a class in the directory for units
    std::string valve = "Valve";               ///< another
    std::string renamed = "Booster";           ///< the new name of the pump
    std::string control = "Control";           ///< a subsystem with its own directory
    std::string controller = "PumpController"; ///< a class in that directory
    std::string operators = "Operator";        ///< another subsystem with its own
    std::string plan = "wiring.txt";           ///< an embedded file
};

/// Names with blanks, umlauts and leading dashes.
Names hardNames();

class Project : public tools::Workplace {
  public:
    /// Makes the model and chooses the tool. Nothing is under the tool yet.
    Project(const std::string &tool, Names names);

    [[nodiscard]] const Names &names() const { return names_; }
    [[nodiscard]] Adapter &archive() { return *adapter_; }
    [[nodiscard]] std::filesystem::path units() const {
        return directory() / "Püm pe" / (names_.project + "_ory");
    }
    [[nodiscard]] std::filesystem::path file(const std::string &name) const { return units() / name; }

    /// Runs orchard-cm on the project: the words, then "--" and the items.
    tools::Ran run(std::vector<std::string> words, const std::vector<std::string> &items = {});
    /// Runs a batch to its end, one command a line, and returns the numbers of the lines that failed.
    std::set<std::size_t> failedLines(const std::string &lines);
    /// Returns what "show" reports about a unit.
    nlohmann::json show(const std::string &unit);
    /// Returns the files in the directory for units except those of the tool, relative to it.
    [[nodiscard]] std::set<std::string> files() const;

    /// Replaces a text in a unit's file, which has to hold it.
    void edit(const std::string &file, const std::string &from, const std::string &to);
    [[nodiscard]] bool isWritable(const std::string &file) const;
    [[nodiscard]] std::string text(const std::string &file) const { return read(units() / file); }

  private:
    /// Changes the name of a unit whose file is in the directory for units, or below.
    void call(const std::string &directory, const std::string &owner, const std::string &extension,
              const std::string &from, const std::string &to);

    Names names_;
    std::unique_ptr<Adapter> adapter_;
};

} // namespace scenario
