// Creates projects of the reference host for the benchmarks.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IProject.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Keeps a project open while it lives.
class OpenProject {
  public:
    explicit OpenProject(const std::filesystem::path &projectFile);
    ~OpenProject();
    OpenProject(const OpenProject &) = delete;
    OpenProject &operator=(const OpenProject &) = delete;

    [[nodiscard]] IProject &project() const { return *project_; }
    /// Returns all units with a file of their own, except the project.
    [[nodiscard]] std::vector<IUnit *> units() const;
    /// Sets a property with the CM subject on the project.
    void set(const CString &metaclass, const CString &key, const CString &value);

  private:
    IProject *project_ = nullptr;
};

/// Creates a project with `units` units for the tool and returns its project file.
std::filesystem::path makeProject(const std::filesystem::path &directory, int units, const std::string &tool);

/// Returns the large project that several benchmarks share; the first call creates it.
std::filesystem::path largeProject(const std::filesystem::path &scratch, int units);

[[nodiscard]] CMUnitList listOf(const std::vector<IUnit *> &units);

} // namespace bench
