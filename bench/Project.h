// Projects of the reference host for the works to run on.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IProject.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// An open project; closed at the end of its life.
class OpenProject {
  public:
    explicit OpenProject(const std::filesystem::path &projectFile);
    ~OpenProject();
    OpenProject(const OpenProject &) = delete;
    OpenProject &operator=(const OpenProject &) = delete;

    [[nodiscard]] IProject &project() const { return *project_; }
    /// Everything that has a file of its own besides the project.
    [[nodiscard]] std::vector<IUnit *> units() const;
    /// Sets a property of the subject of CM on the project.
    void set(const CString &metaclass, const CString &key, const CString &value);

  private:
    IProject *project_ = nullptr;
};

/// Makes a project of so many units for the tool; its project file.
std::filesystem::path makeProject(const std::filesystem::path &directory, int units, const std::string &tool);

/// The project of so many units that the works on a large model share; made at the first call.
std::filesystem::path largeProject(const std::filesystem::path &scratch, int units);

[[nodiscard]] CMUnitList listOf(const std::vector<IUnit *> &units);

} // namespace bench
