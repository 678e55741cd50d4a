// Picks, makes and opens projects.
#pragma once

#include "providers/subversion/Client.h"

#include <string>

namespace svnscc {

struct Choice {
    std::string url;
    bool isNew = false; ///< the project was made in the repository
};

/// The project of a local directory. If a working copy holds the directory, its address there is the project, and
/// the name is ignored. Else the project is the directory `name` below the repository root of the settings (or
/// `name` as an URL; the name of the local directory if it is empty), and the local directory becomes a working
/// copy of it; the files in it stay as they are. With `mayCreate` a directory that the repository doesn't have is
/// made. On failure throws Failure.
Choice chooseProject(Client &client, const std::string &name, const std::string &directory, bool mayCreate,
                     const std::string &comment);

/// The project in a local directory, which must be a working copy of `url`, and which the repository must still
/// have. On failure throws Failure.
Project findProject(Client &client, const std::string &url, const std::string &directory);

} // namespace svnscc
