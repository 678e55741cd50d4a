// StaticTraits: status bits that follow from properties of the working copy, and not from its state.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/FileState.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace svnscc {

class StaticTraits {
  public:
    /// Reads svn:mime-type and svn:externals of all files of the project, without asking the repository. On
    /// failure throws Failure.
    static StaticTraits ofProject(Client &client);
    /// The same for these files only, which is cheaper for a few of a large project.
    static StaticTraits ofFiles(Client &client, const Names &names, const std::vector<FileState> &states);

    /// SCC_STATUS_NOMERGE for a file that is no text, SCC_STATUS_PINNED for one of another directory that is held
    /// at one revision; else 0.
    [[nodiscard]] long bits(const std::string &path, const FileState &state) const;

  private:
    StaticTraits() = default;
    void readTypes(Client &client, const std::string &path, svn_depth_t depth);
    void readExternals(Client &client);

    std::unordered_set<std::string> binary_;
    std::unordered_set<std::string> pinned_;
};

} // namespace svnscc
