// StaticTraits: status bits that follow from properties of the working copy, and not from its state.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/FileState.h"

#include <string>
#include <unordered_set>

namespace svnscc {

/// Reads svn:mime-type and svn:externals of the project's working copy once, without asking the repository.
class StaticTraits {
  public:
    /// On failure throws Failure.
    explicit StaticTraits(Client &client);

    /// SCC_STATUS_NOMERGE for a file that is no text, SCC_STATUS_PINNED for one of another directory that is held
    /// at one revision; else 0.
    [[nodiscard]] long bits(const std::string &path, const FileState &state) const;

  private:
    std::unordered_set<std::string> binary_;
    std::unordered_set<std::string> pinned_;
};

} // namespace svnscc
