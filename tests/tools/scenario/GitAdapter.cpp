// Git: a shared bare repository in a directory whose name holds a blank, and a clone of Bob's own.
#include "tests/tools/scenario/Adapter.h"

#include <stdexcept>

namespace scenario {

namespace {

namespace fs = std::filesystem;
using tools::quoted;

class GitAdapter : public Adapter {
  public:
    GitAdapter(tools::Workplace &place, const fs::path &units) : Adapter(place, units) {
        tools::Workplace::write(place.directory() / ".gitconfig",
                                "[user]\n\tname = anna\n\temail = anna@example.org\n");
    }

    [[nodiscard]] std::string tool() const override { return "Git"; }
    [[nodiscard]] std::string archive() const override { return (place().directory() / "arc hive").string(); }
    [[nodiscard]] std::string cannot(Skill skill) const override {
        switch (skill) {
        case Skill::locks:
            return "Git has no locks: who changes one file at the same time meets when pushing";
        case Skill::directoriesByThemselves:
            return "Git keeps files, and knows directories only as parts of their names";
        default:
            return {};
        }
    }

    std::set<std::string> files() override {
        std::set<std::string> names;
        // Without -z Git would quote some names.
        for (const std::string &line :
             linesOf(git("ls-tree -r -z --name-only " + quoted("HEAD:" + top()) + " | tr '\\0' '\\n'"))) {
            if (!fs::path(line).filename().string().starts_with(".git")) {
                names.insert(line);
            }
        }
        return names;
    }
    std::string newest(const std::string &file) override { return git("cat-file blob " + at("HEAD", file)); }
    int versions(const std::string &file) override {
        return static_cast<int>(linesOf(git("log --format=%h HEAD -- " + path(file))).size());
    }
    std::string comment(const std::string &file) override {
        return trimmed(git("log -1 --format=%B HEAD -- " + path(file)));
    }
    /// Git treats text that is not UTF-8 as Latin-1, with a warning.
    [[nodiscard]] std::string asArchived(const std::string &comment) const override {
        try {
            static_cast<void>(nlohmann::json(comment).dump());
            return comment;
        } catch (const nlohmann::json::type_error &) {
            return place().shell("printf %s " + quoted(comment) + " | iconv -f LATIN1 -t UTF-8").out;
        }
    }
    std::string labelled(const std::string &label, const std::string &file) override {
        const tools::Ran ran = place().shell(shared() + "cat-file blob " + at("refs/tags/" + label, file));
        return ran.exit == 0 ? ran.out : std::string();
    }
    std::string locker(const std::string & /*file*/) override { return {}; }

    void lockAsBob(const std::string & /*file*/) override { throw std::logic_error(cannot(Skill::locks)); }
    void unlockAsBob(const std::string & /*file*/) override { throw std::logic_error(cannot(Skill::locks)); }
    void changeAsBob(const std::string &file, const std::string &from, const std::string &to) override {
        const fs::path mine = bobsPlace();
        must(std::string(english) + "git clone -q " + quoted(archive()) + " " + quoted(mine.string()));
        const std::string name = quoted(top() + "/" + file);
        must("cd " + quoted(mine.string()) + " && sed -i " + quoted("s|" + from + "|" + to + "|") + " -- " + name +
             " && git -c user.name=bob commit -q -m 'of Bob' -- " + name + " && git push -q");
    }

  private:
    static constexpr auto english = "env LC_ALL=C.UTF-8 LANGUAGE= ";

    [[nodiscard]] std::string top() const { return units().filename().string(); }
    [[nodiscard]] std::string path(const std::string &file) const { return quoted(top() + "/" + file); }
    [[nodiscard]] std::string at(const std::string &version, const std::string &file) const {
        return quoted(version + ":" + top() + "/" + file);
    }
    [[nodiscard]] std::string shared() const {
        return std::string(english) +
               "git --no-pager --literal-pathspecs -c core.quotePath=false --git-dir=" + quoted(archive()) + " ";
    }
    std::string git(const std::string &command) { return must(shared() + command); }
};

} // namespace

std::unique_ptr<Adapter> makeGitAdapter(tools::Workplace &place, const fs::path &units) {
    return std::make_unique<GitAdapter>(place, units);
}

} // namespace scenario
