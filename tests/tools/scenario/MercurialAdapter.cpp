// Mercurial: a shared repository in a directory whose name holds a blank, and a clone of Bob's own.
#include "tests/tools/scenario/Adapter.h"

#include <stdexcept>

namespace scenario {

namespace {

namespace fs = std::filesystem;
using tools::quoted;

class MercurialAdapter : public Adapter {
  public:
    MercurialAdapter(tools::Workplace &place, const fs::path &units) : Adapter(place, units) {
        tools::Workplace::write(place.directory() / ".hgrc", "[ui]\nusername = anna\n");
        // The command server ends by itself when its socket is gone with the test's directory.
        place.setEnvironment("CHGSOCKNAME", (place.directory().parent_path() / "socket").string());
    }

    [[nodiscard]] std::string tool() const override { return "Mercurial"; }
    [[nodiscard]] std::string archive() const override { return (place().directory() / "arc hive").string(); }
    [[nodiscard]] std::string cannot(Skill skill) const override {
        switch (skill) {
        case Skill::locks:
            return "Mercurial has no locks: who changes one file at the same time meets when pushing";
        case Skill::directoriesByThemselves:
            return "Mercurial keeps files, and knows directories only as parts of their names";
        default:
            return {};
        }
    }

    std::set<std::string> files() override {
        std::set<std::string> names;
        for (const std::string &line : linesOf(hg("manifest --rev tip"))) {
            if (line.starts_with(top() + "/")) {
                names.insert(line.substr(top().size() + 1));
            }
        }
        return names;
    }
    std::string newest(const std::string &file) override { return hg("cat --rev tip -- " + path(file)); }
    int versions(const std::string &file) override {
        return static_cast<int>(linesOf(hg("log --template '{node}\\n' -- " + path(file))).size());
    }
    std::string comment(const std::string &file) override {
        return trimmed(hg("log --limit 1 --template '{desc}' -- " + path(file)));
    }
    std::string labelled(const std::string &label, const std::string &file) override {
        const tools::Ran ran = place().shell(shared() + "cat --rev " + quoted(label) + " -- " + path(file));
        return ran.exit == 0 ? ran.out : std::string();
    }
    std::string locker(const std::string & /*file*/) override { return {}; }

    void lockAsBob(const std::string & /*file*/) override { throw std::logic_error(cannot(Skill::locks)); }
    void unlockAsBob(const std::string & /*file*/) override { throw std::logic_error(cannot(Skill::locks)); }
    void changeAsBob(const std::string &file, const std::string &from, const std::string &to) override {
        const fs::path mine = bobsPlace();
        must(std::string(english) + "chg clone --quiet " + quoted(archive()) + " " + quoted(mine.string()));
        must("cd " + quoted(mine.string()) + " && sed -i " + quoted("s|" + from + "|" + to + "|") + " -- " +
             path(file) + " && " + english + "chg commit --quiet --user bob --message 'of Bob' -- " + path(file) +
             " && " + english + "chg push --quiet");
    }

  private:
    static constexpr auto english = "env LC_ALL=C.UTF-8 LANGUAGE= HGPLAIN=1 HGENCODING=UTF-8 ";

    [[nodiscard]] std::string top() const { return units().filename().string(); }
    [[nodiscard]] std::string path(const std::string &file) const { return quoted(top() + "/" + file); }
    [[nodiscard]] std::string shared() const {
        return std::string(english) + "chg --cwd " + quoted(archive()) + " ";
    }
    std::string hg(const std::string &command) { return must(shared() + command); }
};

} // namespace

std::unique_ptr<Adapter> makeMercurialAdapter(tools::Workplace &place, const fs::path &units) {
    return std::make_unique<MercurialAdapter>(place, units);
}

} // namespace scenario
