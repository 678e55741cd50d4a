// Subversion: a repository in a directory whose name holds a blank, and a working copy of Bob's own.
#include "tests/tools/scenario/Adapter.h"

namespace scenario {

namespace {

namespace fs = std::filesystem;
using tools::quoted;

class SubversionAdapter : public Adapter {
  public:
    using Adapter::Adapter;

    [[nodiscard]] std::string tool() const override { return "Subversion"; }
    [[nodiscard]] std::string archive() const override { return (place().directory() / "arc hive").string(); }
    [[nodiscard]] std::string cannot(Skill skill) const override {
        switch (skill) {
        case Skill::labels:
            return "Subversion has no labels for versions of a file, only copies of directories";
        case Skill::directoriesByThemselves:
            return "Subversion commits directories, and checks none out or in";
        default:
            return {};
        }
    }

    std::set<std::string> files() override {
        std::set<std::string> names;
        for (const std::string &line : linesOf(svn("list --recursive " + address("")))) {
            if (!line.ends_with('/')) {
                names.insert(line);
            }
        }
        return names;
    }
    std::string newest(const std::string &file) override { return svn("cat " + address(file)); }
    int versions(const std::string &file) override {
        int count = 0;
        for (const std::string &line : linesOf(svn("log --quiet --stop-on-copy " + address(file)))) {
            count += line.starts_with("r") ? 1 : 0;
        }
        return count;
    }
    std::string comment(const std::string &file) override {
        const std::string log = svn("log --limit 1 " + address(file));
        const auto begin = log.find("\n\n") + 2;
        return trimmed(log.substr(begin, log.rfind("\n----") - begin));
    }
    std::string labelled(const std::string & /*label*/, const std::string & /*file*/) override { return {}; }
    std::string locker(const std::string &file) override {
        for (const std::string &line : linesOf(svn("info " + address(file)))) {
            if (line.starts_with("Lock Owner: ")) {
                return line.substr(12);
            }
        }
        return {};
    }
    [[nodiscard]] std::string self() const override {
        return trimmed(
            place().shell("id -un").out); // a repository on the same machine uses the name of the account
    }

    void lockAsBob(const std::string &file) override { svn("lock --username bob " + address(file)); }
    void unlockAsBob(const std::string &file) override { svn("unlock --force --username bob " + address(file)); }
    void changeAsBob(const std::string &file, const std::string &from, const std::string &to) override {
        const fs::path mine = bobsPlace();
        svn("checkout --quiet " + address("") + " " + quoted(mine.string()));
        const std::string name = quoted((mine / file).string() + "@");
        svn("lock --username bob " + name);
        must("sed -i " + quoted("s|" + from + "|" + to + "|") + " " + quoted((mine / file).string()));
        svn("commit --username bob --message='of Bob' " + name);
    }

  private:
    [[nodiscard]] std::string address(const std::string &file) const {
        std::string path = archive() + "/" + units().filename().string() + (file.empty() ? "" : "/" + file);
        return quoted("file://" + path + "@");
    }
    std::string svn(const std::string &command) {
        return must("env LC_ALL=C.UTF-8 LANGUAGE= svn --non-interactive --no-auth-cache " + command);
    }
};

} // namespace

std::unique_ptr<Adapter> makeSubversionAdapter(tools::Workplace &place, const fs::path &units) {
    return std::make_unique<SubversionAdapter>(place, units);
}

} // namespace scenario
