// Adapter: one CM tool as the scenario sees it: by the tool's own commands, never by what Orchard says of it.
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
    labels,                 ///< give the version of a check in a label, by which it can be checked out again
    historyAcrossRenames,   ///< tell of the versions under a former name
    directoriesByThemselves ///< check a directory out and in, so that many files are added in between
};

class Adapter {
  public:
    /// `units`: the project's directory for units.
    Adapter(tools::Workplace &place, std::filesystem::path units) : place_(place), units_(std::move(units)) {}
    virtual ~Adapter() = default;
    Adapter(const Adapter &) = delete;
    Adapter &operator=(const Adapter &) = delete;

    /// The name of its property set.
    [[nodiscard]] virtual std::string tool() const = 0;
    /// What "connect" is given; empty for nothing.
    [[nodiscard]] virtual std::string archive() const = 0;
    /// Why it can't do something; empty if it can.
    [[nodiscard]] virtual std::string cannot(Skill skill) const = 0;

    // Files are named relative to the directory for units, with slashes.

    /// The files in the newest state of the archive, but for the tool's own.
    virtual std::set<std::string> files() = 0;
    /// The archived bytes of the newest version.
    virtual std::string newest(const std::string &file) = 0;
    /// How many versions there are under the file's present name.
    virtual int versions(const std::string &file) = 0;
    /// The comment of the newest version, without line ends behind it.
    virtual std::string comment(const std::string &file) = 0;
    /// What the tool makes of a comment.
    [[nodiscard]] virtual std::string asArchived(const std::string &comment) const { return comment; }
    /// The archived bytes of the version that has the label; empty if none has.
    virtual std::string labelled(const std::string &label, const std::string &file) = 0;
    /// Who has the file locked, or the empty text.
    virtual std::string locker(const std::string &file) = 0;
    /// Whose locks those of the user at work are.
    [[nodiscard]] virtual std::string self() const { return "anna"; }

    /// Bob locks a file, or gives the lock up; only for a tool with locks.
    virtual void lockAsBob(const std::string &file) = 0;
    virtual void unlockAsBob(const std::string &file) = 0;
    /// Bob checks a version in, from a place of his own, in which `from` is replaced by `to`.
    virtual void changeAsBob(const std::string &file, const std::string &from, const std::string &to) = 0;

  protected:
    /// Runs a shell command in the test's directory and gives what it wrote; throws if it fails.
    std::string must(const std::string &command);
    /// The same in the directory for units.
    std::string there(const std::string &command);
    [[nodiscard]] tools::Workplace &place() const { return place_; }
    [[nodiscard]] const std::filesystem::path &units() const { return units_; }
    /// A directory of Bob's own, made anew.
    std::filesystem::path bobsPlace();

  private:
    tools::Workplace &place_;
    std::filesystem::path units_;
};

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string &text);
std::string trimmed(std::string text);

/// The adapter of a tool, by the name of its set.
std::unique_ptr<Adapter> makeAdapter(const std::string &tool, tools::Workplace &place,
                                     const std::filesystem::path &units);

// One a source file.
std::unique_ptr<Adapter> makeRcsAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeCvsAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeSubversionAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeGitAdapter(tools::Workplace &place, const std::filesystem::path &units);
std::unique_ptr<Adapter> makeMercurialAdapter(tools::Workplace &place, const std::filesystem::path &units);

} // namespace scenario
