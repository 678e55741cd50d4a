// RCS: archives in directories RCS beside the files.
#include "tests/tools/scenario/Adapter.h"

namespace scenario {

namespace {

namespace fs = std::filesystem;
using tools::quoted;

class RcsAdapter : public Adapter {
  public:
    using Adapter::Adapter;

    [[nodiscard]] std::string tool() const override { return "RCS"; }
    [[nodiscard]] std::string archive() const override { return {}; }
    [[nodiscard]] std::string cannot(Skill skill) const override {
        switch (skill) {
        case Skill::historyAcrossRenames:
            return {}; // the archive file is renamed with all it holds
        case Skill::directoriesByThemselves:
            return "RCS keeps files, and knows no directories";
        default:
            return {};
        }
    }

    std::set<std::string> files() override {
        std::set<std::string> names;
        for (const std::string &line : linesOf(there("find . -path '*/RCS/*,v' ! -path '*/Attic/*'"))) {
            const fs::path archive = fs::path(line).lexically_normal();
            const std::string name = archive.filename().string();
            names.insert((archive.parent_path().parent_path() / name.substr(0, name.size() - 2)).string());
        }
        return names;
    }
    std::string newest(const std::string &file) override { return there("co -q -p " + archived(file)); }
    int versions(const std::string &file) override { return std::stoi(field(file, "total revisions: ")); }
    std::string comment(const std::string &file) override {
        const std::string log = there("rlog -r " + archived(file));
        const auto date = log.find("\ndate: ", log.find("\n----------------------------\n"));
        const auto begin = log.find('\n', date + 1) + 1;
        return trimmed(log.substr(begin, log.rfind("\n====") - begin));
    }
    std::string labelled(const std::string &label, const std::string &file) override {
        const tools::Ran ran = place().shell("cd " + quoted(units().string()) + " && co -q -p " +
                                             quoted("-r" + label) + " " + archived(file));
        return ran.exit == 0 ? ran.out : std::string();
    }
    std::string locker(const std::string &file) override {
        const std::string locks = field(file, "locks: strict\n\t");
        return locks.substr(0, locks.find(':'));
    }

    void lockAsBob(const std::string &file) override { asBob("rcs -q -l " + archived(file)); }
    void unlockAsBob(const std::string &file) override { asBob("rcs -q -u " + archived(file)); }
    void changeAsBob(const std::string &file, const std::string &from, const std::string &to) override {
        const std::string name = quoted("./" + fs::path(file).filename().string());
        const std::string both = name + " " + quoted((units() / archiveOf(file)).string());
        asBob("cd " + quoted(bobsPlace().string()) + " && co -q -l " + both + " && sed -i " +
              quoted("s|" + from + "|" + to + "|") + " -- " + name + " && ci -q -m'of Bob' " + both);
    }

  private:
    static fs::path archiveOf(const std::string &file) {
        const fs::path path(file);
        return path.parent_path() / "RCS" / (path.filename().string() + ",v");
    }
    static std::string archived(const std::string &file) { return quoted("./" + archiveOf(file).string()); }
    std::string field(const std::string &file, const std::string &name) {
        const std::string log = there("rlog -h " + archived(file));
        const auto at = log.find(name);
        return at == std::string::npos
                   ? std::string()
                   : log.substr(at + name.size(), log.find('\n', at + name.size()) - at - name.size());
    }
    void asBob(const std::string &command) {
        place().becomeUser("bob");
        there(command);
        place().becomeUser("anna");
    }
};

} // namespace

std::unique_ptr<Adapter> makeRcsAdapter(tools::Workplace &place, const fs::path &units) {
    return std::make_unique<RcsAdapter>(place, units);
}

} // namespace scenario
