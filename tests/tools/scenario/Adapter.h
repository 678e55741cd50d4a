// Queries and changes an archive with a CM tool's own commands, independently of what Orchard reports.
#pragma once

#include "tests/tools/Workplace.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace scenario {

/// What not every tool can do.
enum class Skill {
    locks,                  ///< lock a file so that nobody else can check it in
    labels,                 ///< label the version of a check in, and check it out by the label
    historyAcrossRenames,   ///< list the versions under a former name
    directoriesByThemselves ///< check a directory out and in, so that many files are added in between
};

class Adapter {
  public:
    /// `units`: the project's directory for units.
    Adapter(tools::Workplace &place, std::filesystem::path units) : place_(place), units_(std::move(units)) {}
    virtual ~Adapter() = default;
    Adapter(const Adapter &) = delete;
    Adapter &operator=(const Adapter &) = delete;

    /// Returns the name of its property set.
    [[nodiscard]] virtual std::string tool() const = 0;
    /// Returns the argument of "connect"; empty for none.
    [[nodiscard]] virtual std::string archive() const = 0;
    /// Returns why it can't do something; empty if it can.
    [[nodiscard]] virtual std::string cannot(Skill skill) const = 0;

    // Files are named relative to the directory for units, with slashes.

    /// Returns the files in the newest state of the archive, except the tool's own.
    virtual std::set<std::string> files() = 0;
    /// Returns the archived bytes of the newest version.
    virtual std::string newest(const std::string &file) = 0;
    /// Returns the number of versions under the file's present name.
    virtual int versions(const std::string &file) = 0;
    /// Returns the comment of the newest version, without trailing line ends.
    virtual std::string comment(const std::string &file) = 0;
    /// Returns a comment in the form in which the tool keeps it.
    [[nodiscard]] virtual std::string asArchived(const std::string &comment) const { return comment; }
    /// Returns the archived bytes of the version that has the label; empty if there is none.
    virtual std::string labelled(const std::string &label, const std::string &file) = 0;
    /// Returns who has locked the file, or the empty text.
    virtual std::string locker(const std::string &file) = 0;
    /// Returns the name under which the current user holds locks.
    [[nodiscard]] virtual std::string self() const { return "anna"; }

    /// Locks a file as Bob, or releases the lock; only for a tool with locks.
    virtual void lockAsBob(const std::string &file) = 0;
    virtual void unlockAsBob(const std::string &file) = 0;
    /// Checks in a version as Bob, from his own directory, in which `from` is replaced by `to`.
    virtual void changeAsBob(const std::string &file, const std::string &from, const std::string &to) = 0;

  protected:
    /// Runs a shell command in the test's directory and returns its output; throws if it fails.
    std::string must(const std::string &command);
    /// The same in the directory for units.
    std::string there(const std::string &command);
    [[nodiscard]] tools::Workplace &place() const { return place_; }
    [[nodiscard]] const std::filesystem::path &units() const { return units_; }
    /// Creates a new directory for Bob and returns it.
    std::filesystem::path bobsPlace();

  private:
    tools::Workplace &place_;
    std::filesystem::path units_;
};

/// Returns the lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string &text);
std::string trimmed(std::string text);

/// Returns the adapter of a tool, by the name of its set.
std::unique_ptr<Adapter> makeAdapter(const std::string &tool, tools::Workplace &place,
                                     const std::filesystem::path &units);

// Each is defined in its own source file.
std::unique_ptr<Adapter> makeRcsAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeCvsAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeSubversionAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeGitAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeMercurialAdapter(tools::Workplace &place, const std::filesystem::path &units);

} // namespace scenario
