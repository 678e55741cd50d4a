// Provides the sample project of a pump station with its unit files under RCS, in anna's workspace.
#pragma once

#include "tests/tools/Workplace.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tools {

class RcsProject : public Workplace {
  public:
    /// Makes the project in a directory whose name holds a blank and an umlaut, and checks all units in as 1.1.
    RcsProject();

    /// The project's directory, in which the program runs.
    [[nodiscard]] std::filesystem::path project() const { return directory() / "Püm pe"; }
    /// The project file.
    [[nodiscard]] std::filesystem::path projectFile() const { return project() / "station.orp"; }

    /// Runs orchard-cm on the project.
    Ran onProject(std::vector<std::string> words, const std::string &input = {});

    /// Returns what "show" reports about a unit.
    nlohmann::json show(const std::string &unit);
    /// Returns the file of a unit, by its name.
    std::filesystem::path fileOf(const std::string &unit);
    [[nodiscard]] static std::filesystem::path archiveOf(const std::filesystem::path &file);

    /// Another user checks in a further version of a unit, in which `from` is replaced by `to`, in a directory of
    /// their own, so that the file of the project stays as it is.
    void changeElsewhere(const std::string &user, const std::filesystem::path &file, const std::string &from,
                         const std::string &to);
    /// Another user locks the newest version.
    void lockElsewhere(const std::string &user, const std::filesystem::path &file);
    /// The lines of the archive about locks: "anna: 1.1".
    std::string locksOf(const std::filesystem::path &file);

    /// Checks the project's own unit out to change it.
    void lockProject();

    /// Puts a script before the tool's program of this name; `body` is shell.
    void replaceProgram(const std::string &name, const std::string &body);

  private:
    /// Runs a command that has to succeed.
    void must(const std::string &command);
    std::string elsewhere(const std::filesystem::path &file);
};

} // namespace tools
