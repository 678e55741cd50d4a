// Reads the provider's own key of the registry.
#pragma once

#include <string>

namespace svnscc {

/// The texts of the key HKEY_LOCAL_MACHINE\Software\Subversion\SCCServer; a missing one is empty.
struct Settings {
    std::string repositoryRoot;  ///< RepositoryRoot: the URL below which new projects are made
    std::string user;            ///< User: the user's name in the repository, if the host gives none
    std::string configDirectory; ///< ConfigDir: Subversion's configuration, instead of ~/.subversion
};

/// Reads the settings as they are now; a registry that is missing or can't be read gives empty ones.
Settings readSettings();

} // namespace svnscc
