// Context: what the provider keeps for a host between SccInitialize and SccUninitialize.
#pragma once

#include "providers/subversion/Output.h"
#include "providers/subversion/Pool.h"
#include "providers/subversion/Settings.h"

#include <svn_auth.h>

#include <optional>
#include <string>

namespace svnscc {

/// The open project: a working copy of a directory in a repository.
struct Project {
    std::string url;       ///< the name of the project
    std::string directory; ///< the working copy, or the part of one, that belongs to it
    std::string root;      ///< the top directory of the working copy
};

class Context {
  public:
    /// Reads the settings and Subversion's configuration. On failure throws Failure.
    Context();
    ~Context();
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    Output &output() { return output_; }
    [[nodiscard]] const Settings &settings() const { return settings_; }
    /// Subversion's configuration files, as its libraries read them.
    [[nodiscard]] apr_hash_t *configuration() const { return configuration_; }

    /// Makes this user log in from now on; an empty name is the user of the settings, or the one that Subversion
    /// knows.
    void setUser(const std::string &user);
    /// The name that was set, or that of the settings; may be empty.
    [[nodiscard]] const std::string &user() const { return user_; }
    /// Where the libraries find names and passwords.
    [[nodiscard]] svn_auth_baton_t *credentials() const { return credentials_; }

    [[nodiscard]] bool hasProject() const { return project_.has_value(); }
    /// The open project. Throws Failure (SCC_E_PROJNOTOPEN) without one.
    [[nodiscard]] const Project &project() const;
    void open(Project project) { project_ = std::move(project); }
    void close();

    /// The file that holds the list of tasks for the host; it is removed with the project. Empty before the first
    /// list.
    std::string taskListFile;

  private:
    Pool pool_;
    Output output_;
    Settings settings_;
    apr_hash_t *configuration_ = nullptr;
    std::string user_;
    svn_auth_baton_t *credentials_ = nullptr;
    std::optional<Project> project_;
};

} // namespace svnscc
