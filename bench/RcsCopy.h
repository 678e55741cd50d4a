// A project under RCS that each run works on a fresh copy of.
#pragma once

#include "bench/Works.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

class RcsCopy {
  public:
    enum class Mode { readOnly, readWrite };

    /// Makes a project of 1,000 units (scaled) in the directory `name` of the scratch one, and checks all units
    /// in.
    RcsCopy(const Setting &setting, const std::string &name);

    /// The project file that copies are made of.
    [[nodiscard]] const std::filesystem::path &original() const { return original_; }
    /// A file with the units' files, relative to the project's directory, one a line.
    [[nodiscard]] const std::filesystem::path &list() const { return list_; }
    [[nodiscard]] std::size_t count() const { return files_.size(); }

    /// Makes the copy anew; its project file.
    [[nodiscard]] std::filesystem::path freshCopy() const;
    /// Runs the shell command for each "$file" of the copy, one after the other.
    void runLoop(const std::string &command) const;
    /// Throws unless every unit's file of the copy has this mode.
    void expectAll(Mode mode) const;

  private:
    std::filesystem::path original_;
    std::filesystem::path copy_;
    std::filesystem::path list_;
    std::vector<std::filesystem::path> files_;
};

} // namespace bench
