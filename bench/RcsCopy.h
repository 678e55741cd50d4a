// Provides a project under RCS. Each run uses a new copy of it.
#pragma once

#include "bench/Works.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

class RcsCopy {
  public:
    enum class Mode { readOnly, readWrite };

    /// Creates a project of 1,000 units (scaled) in the directory `name` of the scratch directory, and checks in
    /// all units.
    RcsCopy(const Setting &setting, const std::string &name);

    /// Returns the project file of the original.
    [[nodiscard]] const std::filesystem::path &original() const { return original_; }
    /// Returns a file with the names of the unit files relative to the project's directory, one on each line.
    [[nodiscard]] const std::filesystem::path &list() const { return list_; }
    [[nodiscard]] std::size_t count() const { return files_.size(); }

    /// Makes a new copy and returns its project file.
    [[nodiscard]] std::filesystem::path freshCopy() const;
    /// Runs the shell command for each "$file" of the copy, one after another.
    void runLoop(const std::string &command) const;
    /// Throws unless every unit file of the copy has this mode.
    void expectAll(Mode mode) const;

  private:
    std::filesystem::path original_;
    std::filesystem::path copy_;
    std::filesystem::path list_;
    std::vector<std::filesystem::path> files_;
};

} // namespace bench
