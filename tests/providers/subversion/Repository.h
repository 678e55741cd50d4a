// A Subversion repository for one test, with the svn program to see what is in it, and a server if the test wants
// one.
#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/types.h>

namespace provider_test {

/// Runs a command of the shell and returns what it writes on both channels, without the last line end. Its exit
/// status is added in brackets if it isn't 0.
std::string shell(const std::string &command);
/// A text in single quotes, for shell().
std::string inQuotes(const std::string &text);

/// An svnserve process on a free port of this machine; the destructor ends it.
class Server {
  public:
    explicit Server(const std::string &directory);
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    void stop();
    [[nodiscard]] int port() const { return port_; }

  private:
    int port_;
    pid_t process_ = -1;
};

/// The fixture: a directory with an empty repository and a registry that names it as the place of new projects.
class RepositoryTest : public ::testing::Test {
  protected:
    RepositoryTest();
    ~RepositoryTest() override;

    /// A path in the test's directory.
    [[nodiscard]] std::string at(std::string_view name) const { return directory_ / name; }
    /// Writes a file in the test's directory, even if it is read-only, and returns its path.
    std::string write(const std::string &name, const std::string &contents) const;
    [[nodiscard]] std::string url(const std::string &path = {}) const {
        return "file://" + at("repository") + (path.empty() ? "" : "/" + path);
    }
    /// Runs svn, which never asks, in the user's configuration of the test.
    [[nodiscard]] std::string svn(const std::string &arguments) const;
    /// "svn status" of a directory or file; empty without anything to say.
    [[nodiscard]] std::string svnStatus(const std::string &path) const {
        return svn("status " + inQuotes(path + "@"));
    }
    /// The contents of a file in the newest revision.
    [[nodiscard]] std::string stored(const std::string &path) const {
        return svn("cat " + inQuotes(url(path) + "@"));
    }
    /// Who holds the lock of a file in the repository; empty without one.
    [[nodiscard]] std::string lockOwner(const std::string &path) const;
    [[nodiscard]] std::string newestRevision() const {
        return shell("svnlook youngest " + inQuotes(at("repository")));
    }
    /// Makes the registry that the provider reads.
    void writeRegistry(const std::string &root, const std::string &configuration,
                       const std::string &user = {}) const;

    support::TemporaryDirectory directory_;
};

bool isWritable(const std::string &path);

} // namespace provider_test
