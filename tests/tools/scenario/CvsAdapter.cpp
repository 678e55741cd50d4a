// CVS: a repository in a directory whose name holds a blank, and a workspace of Bob's own.
#include "tests/tools/scenario/Adapter.h"

namespace scenario {

namespace {

namespace fs = std::filesystem;
using tools::quoted;

class CvsAdapter : public Adapter {
  public:
    using Adapter::Adapter;

    [[nodiscard]] std::string tool() const override { return "CVS"; }
    [[nodiscard]] std::string archive() const override { return (place().directory() / "arc hive").string(); }
    [[nodiscard]] std::string cannot(Skill skill) const override {
        switch (skill) {
        case Skill::historyAcrossRenames:
            return "CVS has no renames: a new file is added, the old one removed";
        case Skill::directoriesByThemselves:
            return "CVS adds directories, and has no versions of them";
        default:
            return {};
        }
    }

    std::set<std::string> files() override {
        std::set<std::string> names;
        for (const std::string &line : linesOf(cvs("rls -R -P -e " + quoted(module())))) {
            if (line.ends_with(':')) {
                directory_ = fs::path(line.substr(0, line.size() - 1)).lexically_relative(module());
            } else if (line.starts_with('/')) {
                names.insert((directory_ / line.substr(1, line.find('/', 1) - 1)).lexically_normal().string());
            }
        }
        return names;
    }
    std::string newest(const std::string &file) override { return cvs("checkout -p " + path(file)); }
    int versions(const std::string &file) override {
        const std::string log = cvs("rlog -N " + path(file));
        const std::string name = "total revisions: ";
        return std::stoi(log.substr(log.find(name) + name.size()));
    }
    std::string comment(const std::string &file) override {
        const std::string log = cvs("rlog -N -r. " + path(file));
        const auto date = log.find("\ndate: ", log.find("\n----------------------------\n"));
        const auto begin = log.find('\n', date + 1) + 1;
        return trimmed(log.substr(begin, log.rfind("\n====") - begin));
    }
    std::string labelled(const std::string &label, const std::string &file) override {
        const tools::Ran ran = place().shell("cvs -f -Q -d " + quoted(archive()) + " checkout -p -r " +
                                             quoted(label) + " " + path(file));
        return ran.exit == 0 ? ran.out : std::string();
    }
    std::string locker(const std::string &file) override {
        const fs::path name(file);
        const std::string editors = there("cd " + quoted("./" + name.parent_path().string()) +
                                          " && cvs -f -Q editors -- " + quoted(name.filename().string()));
        const auto tab = editors.find('\t');
        return tab == std::string::npos ? std::string()
                                        : editors.substr(tab + 1, editors.find('\t', tab + 1) - tab - 1);
    }

    void lockAsBob(const std::string &file) override { atBobs(file, "edit -c", ""); }
    void unlockAsBob(const std::string &file) override { atBobs(file, "unedit", ""); }
    void changeAsBob(const std::string &file, const std::string &from, const std::string &to) override {
        const std::string name = quoted(fs::path(file).filename().string());
        atBobs(file, "edit -c",
               " && sed -i " + quoted("s|" + from + "|" + to + "|") + " -- " + name +
                   " && cvs -f -Q commit -m 'of Bob' -- " + name);
    }

  private:
    [[nodiscard]] std::string module() const { return units().filename().string(); }
    [[nodiscard]] std::string path(const std::string &file) const { return quoted(module() + "/" + file); }
    std::string cvs(const std::string &command) {
        return must("cvs -f -Q -d " + quoted(archive()) + " " + command);
    }
    /// In Bob's workspace, which is brought up to date.
    void atBobs(const std::string &file, const std::string &command, const std::string &then) {
        const fs::path name(file);
        const fs::path mine = place().directory() / "bob's";
        place().becomeUser("bob");
        must("cvs -f -Q -d " + quoted(archive()) + " checkout -d " + quoted("bob's") + " " + quoted(module()));
        must("cd " + quoted((mine / name.parent_path()).string()) + " && cvs -f -Q " + command + " -- " +
             quoted(name.filename().string()) + then);
        place().becomeUser("anna");
    }

    fs::path directory_;
};

} // namespace

std::unique_ptr<Adapter> makeCvsAdapter(tools::Workplace &place, const fs::path &units) {
    return std::make_unique<CvsAdapter>(place, units);
}

} // namespace scenario
