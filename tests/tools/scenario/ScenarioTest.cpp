// A model's life under configuration management, from nothing to the last delete: the same for every tool, for
// names that are hard to quote, and under another language. What Orchard says is compared with what the tool
// itself says. Each step is a test; one that is run alone brings the archive into the state that it needs.
#include "tests/tools/scenario/ScenarioProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <tuple>

namespace fs = std::filesystem;
using scenario::Names;
using scenario::Project;
using scenario::Skill;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::Ran;

namespace {

constexpr auto motor = "motor protection";

std::string fileOf(const std::string &unit) { return unit + ".ocl"; }

enum class Circumstances { plainNames, hardNames, hardNamesInGerman };

struct Scenario {
    Scenario(const char *tool, Circumstances circumstances)
        : project(tool, circumstances == Circumstances::plainNames ? Names() : scenario::hardNames()) {
        if (circumstances == Circumstances::hardNamesInGerman) {
            speakGerman(project);
        }
    }

    /// A locale that the test provides, so that none has to be installed.
    static void speakGerman(tools::Workplace &place) {
        const fs::path locales = place.directory() / "locales";
        fs::create_directory(locales);
        const Ran made =
            place.shell("localedef -i de_DE -f UTF-8 " + tools::quoted((locales / "de_DE.UTF-8").string()));
        ASSERT_EQ(made.exit, 0) << made.out << made.err;
        place.setEnvironment("LOCPATH", locales.string());
        place.setEnvironment("LC_ALL", "de_DE.UTF-8");
        place.setEnvironment("LANG", "de_DE.UTF-8");
        place.setEnvironment("LANGUAGE", "de");
        ASSERT_THAT(place.shell("ls nirgends").err, HasSubstr("nicht gefunden")) << "the language did not change";
    }

    Ran good(const std::vector<std::string> &words, const std::vector<std::string> &items = {}) {
        Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 0) << words.front() << '\n' << ran.out << ran.err;
        return ran;
    }
    Ran bad(const std::vector<std::string> &words, const std::vector<std::string> &items = {}) {
        Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 1) << words.front() << '\n' << ran.out << ran.err;
        return ran;
    }
    /// Returns what "archive" lists, by file.
    std::map<std::string, nlohmann::json> listed() {
        std::map<std::string, nlohmann::json> files;
        const nlohmann::json json = good({"--json", "archive"}).json();
        for (const auto &entry : json["files"]) {
            EXPECT_TRUE(files.emplace(entry["file"], entry).second) << entry << " twice";
        }
        return files;
    }
    std::set<std::string> namesListed() {
        std::set<std::string> listedNames;
        for (const auto &[file, entry] : listed()) {
            listedNames.insert(file);
        }
        return listedNames;
    }
    bool can(Skill skill) { return archive.cannot(skill).empty(); }
    void expectLocker(const std::string &file, const std::string &locker) {
        if (can(Skill::locks)) {
            EXPECT_EQ(archive.locker(file), locker) << file;
        }
    }

    void connect();
    void addAll();
    void list();
    void checkOut();
    void checkIn();
    void history();
    void lockAndUnlock();
    void lockOfAnother();
    void undo();
    void undoToAnotherName();
    void undoToAnotherNameWithItsOwner();
    void fetch();
    void label();
    void rename();
    void move();
    void moveDirectory();
    void remove();

    Project project;
    const Names &names = project.names();
    scenario::Adapter &archive = project.archive();
    std::string pump = fileOf(names.pump);
    std::string valve = fileOf(names.valve);
    std::string root = names.project + ".ory";
    std::string controlDirectory = names.control;
};

void Scenario::connect() {
    good({"connect"},
         archive.archive().empty() ? std::vector<std::string>{} : std::vector<std::string>{archive.archive()});
    EXPECT_THAT(archive.files(), IsEmpty());
}

void Scenario::addAll() {
    good({"add", "--log", "The first version", "--recursive"}, {names.project});
    if (!archive.files().contains(names.plan)) {
        good({"add", "--log", "The first version"}, {names.plan});
    }
    EXPECT_EQ(archive.files(), project.files());
    for (const std::string &file : archive.files()) {
        EXPECT_EQ(archive.versions(file), 1) << file;
        EXPECT_EQ(archive.comment(file), "The first version") << file;
        EXPECT_FALSE(project.isWritable(file)) << file;
    }
    EXPECT_EQ(archive.newest(names.plan), project.text(names.plan));
}

void Scenario::list() {
    const auto files = listed();
    EXPECT_EQ(namesListed(), archive.files());
    for (const auto &[file, entry] : files) {
        EXPECT_NE(entry.value("version", ""), "") << file;
        EXPECT_EQ(entry.value("locker", ""), "") << file;
        EXPECT_NE(entry.value("unit", ""), "") << file << ": the unit of the model was not found";
    }
}

void Scenario::checkOut() {
    archive.changeAsBob(pump, motor, "MOTOR protection");
    EXPECT_THAT(archive.newest(pump), HasSubstr("MOTOR"));
    good({"checkout", "--lock"}, {names.pump});
    EXPECT_THAT(project.text(pump), HasSubstr("MOTOR"));
    EXPECT_TRUE(project.isWritable(pump));
    EXPECT_THAT(project.show(names.pump).dump(), HasSubstr("MOTOR"));
    expectLocker(pump, archive.self());
    if (can(Skill::locks)) {
        EXPECT_EQ(listed()[pump].value("locker", ""), archive.self());
        EXPECT_EQ(listed()[pump].value("mode", ""), "RW");
    }
}

void Scenario::checkIn() {
    const std::string comment =
        "-a Comment of several words: it's (really) \xc3\xa4\xc3\xb6\xc3\xbc; & #1 * ~\n\nand lines";
    project.edit(pump, "MOTOR protection", "starter");
    good({"checkin", "--log=" + comment}, {names.pump});
    EXPECT_THAT(archive.newest(pump), HasSubstr("One pump with its starter."));
    EXPECT_EQ(archive.comment(pump), comment);
    EXPECT_EQ(archive.versions(pump), 3);
    EXPECT_FALSE(project.isWritable(pump));
    expectLocker(pump, "");
    EXPECT_EQ(project.show(names.pump)["version"], listed()[pump]["version"]) << "header and listing differ";
}

void Scenario::history() {
    const std::string told = good({"history"}, {names.pump}).out;
    EXPECT_THAT(told, HasSubstr("it's (really) \xc3\xa4"));
    EXPECT_THAT(told, HasSubstr("of Bob"));
    EXPECT_THAT(told, HasSubstr("The first version"));
}

void Scenario::lockAndUnlock() {
    const std::string before = project.text(valve);
    if (!can(Skill::locks)) {
        bad({"lock"}, {names.valve});
        EXPECT_FALSE(project.isWritable(valve));
        return;
    }
    good({"lock"}, {names.valve});
    EXPECT_EQ(archive.locker(valve), archive.self());
    EXPECT_TRUE(project.isWritable(valve));
    good({"--yes", "unlock"}, {names.valve});
    EXPECT_EQ(archive.locker(valve), "");
    EXPECT_FALSE(project.isWritable(valve));
    EXPECT_EQ(project.text(valve), before);
}

void Scenario::lockOfAnother() {
    if (!can(Skill::locks)) {
        return;
    }
    const std::string before = project.text(valve);
    archive.lockAsBob(valve);
    EXPECT_THAT(bad({"lock"}, {names.valve}).err, Not(IsEmpty()));
    bad({"checkout", "--lock"}, {names.valve});
    EXPECT_EQ(project.text(valve), before);
    EXPECT_FALSE(project.isWritable(valve));
    EXPECT_EQ(archive.locker(valve), "bob");
    EXPECT_EQ(listed()[valve].value("locker", "nobody"), "bob");
    archive.unlockAsBob(valve);
    EXPECT_EQ(archive.versions(valve), 1);
}

void Scenario::undo() {
    const std::string before = project.text(valve);
    good({"checkout", "--lock"}, {names.valve});
    project.edit(valve, "<description>", "<description>A mistake. ");
    good({"--yes", "undo"}, {names.valve});
    EXPECT_EQ(project.text(valve), before);
    EXPECT_FALSE(project.isWritable(valve));
    EXPECT_EQ(archive.versions(valve), 1);
    expectLocker(valve, "");
}

// The archived version has another name than the unit, and the unit's file is named after the unit.
void Scenario::undoToAnotherName() {
    const std::string panel = names.operators + "/Panel.ocl";
    archive.changeAsBob(panel, "<name>Panel</name>", "<name>Console</name>");
    good({"checkout", "--lock"}, {"Panel"});
    project.edit(panel, "<name>Console</name>", "<name>Panel</name>");
    good({"--yes", "undo"}, {"Panel"});
    EXPECT_EQ(project.show("Console")["name"], "Console");
    EXPECT_THAT(archive.newest(panel), HasSubstr("<name>Console</name>"));
    // The owner's file, which names this one, may not be changed: here and in the archive the file keeps its name.
    EXPECT_TRUE(fs::exists(project.file(panel)));
    EXPECT_FALSE(fs::exists(project.file(names.operators + "/Console.ocl")));
    EXPECT_EQ(archive.files(), project.files());
    EXPECT_TRUE(archive.files().contains(panel));
}

// The same where the file that names this one is being worked on: the file follows, and the archive with it.
void Scenario::undoToAnotherNameWithItsOwner() {
    const std::string panel = names.operators + "/Panel.ocl";
    const std::string console = names.operators + "/Console.ocl";
    const std::string owner = names.operators + "/" + names.operators + ".osb";
    archive.changeAsBob(panel, "<name>Panel</name>", "<name>Console</name>");
    good({"checkout", "--lock"}, {"Panel", names.operators});
    project.edit(panel, "<name>Console</name>", "<name>Panel</name>");
    good({"--yes", "undo"}, {"Panel"});
    EXPECT_FALSE(fs::exists(project.file(panel)));
    EXPECT_THAT(project.text(console), HasSubstr("<name>Console</name>"));
    EXPECT_FALSE(project.isWritable(console));
    EXPECT_THAT(project.text(owner), HasSubstr("file=\"Console.ocl\""));
    EXPECT_THAT(project.show("Console")["file"].dump(), HasSubstr("Console.ocl"));
    EXPECT_EQ(archive.files(), project.files());
    EXPECT_THAT(archive.newest(console), HasSubstr("<name>Console</name>"));
    EXPECT_EQ(project.show("Console")["version"], listed()[console]["version"]) << "header and listing differ";
    good({"checkin", "--log", "It names the file"}, {names.operators});
    good({"checkout", "--lock"}, {"Console"});
    EXPECT_TRUE(project.isWritable(console));
}

void Scenario::fetch() {
    archive.changeAsBob(valve, "<description>", "<description>Fetched. ");
    const fs::path elsewhere = project.directory() / "else where";
    good({"fetch", "--to", elsewhere.string()}, {names.valve});
    EXPECT_THAT(tools::Workplace::read(elsewhere / valve), HasSubstr("Fetched. "));
    EXPECT_THAT(project.text(valve), Not(HasSubstr("Fetched. ")));
    good({"fetch"}, {names.valve});
    EXPECT_THAT(project.text(valve), HasSubstr("Fetched. "));
    EXPECT_FALSE(project.isWritable(valve));
    expectLocker(valve, "");
}

void Scenario::label() {
    good({"checkout", "--lock"}, {names.pump});
    project.edit(pump, "starter", "LABELLED");
    if (!can(Skill::labels)) {
        const int versions = archive.versions(pump);
        bad({"checkin", "--log", "With a label", "--label", "REL-1"}, {names.pump});
        EXPECT_EQ(archive.versions(pump), versions);
        EXPECT_THAT(project.text(pump), HasSubstr("LABELLED"));
        good({"checkin", "--log", "Without a label"}, {names.pump});
        return;
    }
    good({"checkin", "--log", "With a label", "--label", "REL-1"}, {names.pump});
    EXPECT_THAT(archive.labelled("REL-1", pump), HasSubstr("LABELLED"));
    EXPECT_EQ(archive.labelled("REL-2", pump), "");
    good({"checkout", "--lock"}, {names.pump});
    project.edit(pump, "LABELLED", "LATER");
    good({"checkin", "--log", "Later"}, {names.pump});
    EXPECT_THAT(archive.labelled("REL-1", pump), HasSubstr("LABELLED"));
    good({"checkout", "--label", "REL-1"}, {names.pump});
    EXPECT_THAT(project.text(pump), HasSubstr("LABELLED"));
    const std::string labelled = project.text(pump);
    bad({"checkout", "--label", "REL-2"}, {names.pump});
    EXPECT_EQ(project.text(pump), labelled) << "a label that is not there must not cost the file";
    good({"checkout"}, {names.pump});
    EXPECT_THAT(project.text(pump), HasSubstr("LATER"));
}

void Scenario::rename() {
    good({"checkout", "--lock"}, {"Drives", names.pump});
    const std::string renamed = fileOf(names.renamed);
    good({"rename"}, {names.pump, names.renamed});
    EXPECT_FALSE(archive.files().contains(pump));
    EXPECT_TRUE(archive.files().contains(renamed));
    EXPECT_FALSE(fs::exists(project.file(pump)));
    good({"checkin", "--log", "Renamed"}, {names.renamed, "Drives"});
    EXPECT_THAT(archive.newest(renamed), HasSubstr("<name>" + names.renamed + "</name>"));
    EXPECT_THAT(archive.newest("Drives.osb"), HasSubstr("file=\"" + renamed + "\""));
    const std::string told = good({"history"}, {names.renamed}).out;
    if (can(Skill::historyAcrossRenames)) {
        EXPECT_THAT(told, HasSubstr("of Bob")) << archive.cannot(Skill::historyAcrossRenames);
    }
    EXPECT_EQ(archive.files(), project.files());
}

void Scenario::move() {
    const std::string from = fileOf(names.renamed);
    const std::string to = controlDirectory + "/" + from;
    const std::string bytes = archive.newest(from).substr(archive.newest(from).find("<name>"));
    good({"checkout", "--lock"}, {"Drives", names.control});
    good({"move"}, {names.renamed, names.control});
    EXPECT_FALSE(archive.files().contains(from));
    EXPECT_TRUE(archive.files().contains(to));
    EXPECT_THAT(archive.newest(to), HasSubstr(bytes));
    if (archive.tool() != "RCS") { // where the archive itself moves, and keeps its comments
        EXPECT_THAT(archive.comment(to), testing::EndsWith(archive.asArchived(from + " to " + to)));
    }
    good({"checkin", "--log", "Moved"}, {"Drives", names.control});
    EXPECT_THAT(archive.newest(controlDirectory + "/" + names.control + ".osb"),
                HasSubstr("file=\"" + from + "\""));
    EXPECT_EQ(archive.files(), project.files());
}

void Scenario::moveDirectory() {
    std::set<std::string> expected;
    for (const std::string &file : archive.files()) {
        expected.insert(file.starts_with(controlDirectory + "/") ? names.operators + "/" + file : file);
    }
    good({"checkout", "--lock"}, {names.project, names.operators});
    good({"move"}, {names.control, names.operators});
    EXPECT_EQ(archive.files(), expected);
    controlDirectory = names.operators + "/" + names.control;
    good({"checkin", "--log", "Moved with all in it"}, {names.project, names.operators});
    EXPECT_THAT(archive.newest(controlDirectory + "/" + fileOf(names.controller)),
                HasSubstr("<name>" + names.controller + "</name>"));
    EXPECT_EQ(archive.files(), project.files());
}

void Scenario::remove() {
    auto expected = archive.files();
    good({"checkout", "--lock"}, {"Drives", names.project, names.operators});
    good({"delete"}, {names.valve});
    EXPECT_EQ(expected.erase(valve), 1U);
    EXPECT_EQ(archive.files(), expected);
    good({"delete"}, {names.plan});
    EXPECT_EQ(expected.erase(names.plan), 1U);
    EXPECT_EQ(archive.files(), expected);
    good({"delete", "--recursive"}, {names.control});
    std::erase_if(expected, [&](const std::string &file) { return file.starts_with(controlDirectory + "/"); });
    EXPECT_EQ(archive.files(), expected);
    good({"checkin", "--log", "Deleted"}, {"Drives", names.project, names.operators});
    EXPECT_EQ(archive.files(), project.files());
}

struct Step {
    const char *name;
    void (Scenario::*work)();
};

/// In this order; each starts with the archive as the previous one left it.
constexpr auto steps = std::to_array<Step>({{"Connect", &Scenario::connect},
                                            {"Add", &Scenario::addAll},
                                            {"List", &Scenario::list},
                                            {"CheckOut", &Scenario::checkOut},
                                            {"CheckIn", &Scenario::checkIn},
                                            {"History", &Scenario::history},
                                            {"LockAndUnlock", &Scenario::lockAndUnlock},
                                            {"LockOfAnother", &Scenario::lockOfAnother},
                                            {"Undo", &Scenario::undo},
                                            {"Fetch", &Scenario::fetch},
                                            {"Label", &Scenario::label},
                                            {"Rename", &Scenario::rename},
                                            {"Move", &Scenario::move},
                                            {"MoveDirectory", &Scenario::moveDirectory},
                                            {"Delete", &Scenario::remove},
                                            {"ListAgain", &Scenario::list}});

struct ScenarioStep : testing::TestWithParam<std::tuple<const char *, Circumstances, std::size_t>> {
    static void TearDownTestSuite() { life.reset(); }

    /// Runs the steps up to this one that have not been run yet.
    static void reach(const char *tool, Circumstances circumstances, std::size_t step) {
        if (!life || life->tool != tool || life->circumstances != circumstances || life->done > step) {
            life = std::make_unique<Life>(tool, circumstances);
        }
        for (; life->done <= step; ++life->done) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, steps.at(life->done).name);
            ASSERT_FALSE(life->isBroken) << "a step before this one failed";
            (life->scenario.*steps.at(life->done).work)();
            life->isBroken = HasFailure();
        }
    }

  private:
    /// What the steps of one tool share.
    struct Life {
        Life(const char *itsTool, Circumstances itsCircumstances)
            : tool(itsTool), circumstances(itsCircumstances), scenario(itsTool, itsCircumstances) {}
        std::string tool;
        Circumstances circumstances;
        Scenario scenario;
        std::size_t done = 0;
        bool isBroken = false;
    };
    static inline std::unique_ptr<Life> life;
};

TEST_P(ScenarioStep, LeavesModelFilesAndArchiveInAgreement) {
    const auto [tool, circumstances, step] = GetParam();
    reach(tool, circumstances, step);
}

struct Undo : testing::TestWithParam<const char *> {
    void SetUp() override {
        scenario.connect();
        scenario.addAll();
        ASSERT_FALSE(HasFailure());
    }
    Scenario scenario{GetParam(), Circumstances::plainNames};
};

TEST_P(Undo, BringsBackTheArchivedName) { scenario.undoToAnotherName(); }

TEST_P(Undo, TakesTheFileAlongWithTheNameWhereItsOwnerMayBeChanged) { scenario.undoToAnotherNameWithItsOwner(); }

const auto allTools = testing::Values("RCS", "CVS", "Subversion", "Git", "Mercurial");

// The build runs the steps of each tool and its circumstances in a separate process, which it selects by the
// name up to the underscore.
std::string nameOf(const testing::TestParamInfo<ScenarioStep::ParamType> &row) {
    const auto [tool, circumstances, step] = row.param;
    return std::string(tool) +
           (circumstances == Circumstances::plainNames  ? "PlainNames_"
            : circumstances == Circumstances::hardNames ? "HardNames_"
                                                        : "HardNamesInGerman_") +
           steps.at(step).name;
}

INSTANTIATE_TEST_SUITE_P(Tools, ScenarioStep,
                         testing::Combine(allTools,
                                          testing::Values(Circumstances::plainNames, Circumstances::hardNames,
                                                          Circumstances::hardNamesInGerman),
                                          testing::Range<std::size_t>(0, steps.size())),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Tools, Undo, allTools, [](const auto &row) { return std::string(row.param); });

// What a tool can't do, and why. The list is complete: an entry may go only when the tool can do it.
struct Skills : testing::TestWithParam<const char *> {};

TEST_P(Skills, ThatAToolLacksAreTheseForTheseReasons) {
    using Reasons = std::map<Skill, std::string>;
    const std::map<std::string, Reasons> lacking = {
        {"RCS", {{Skill::directoriesByThemselves, "RCS keeps files, and knows no directories"}}},
        {"CVS",
         {{Skill::historyAcrossRenames, "CVS has no renames: a new file is added, the old one removed"},
          {Skill::directoriesByThemselves, "CVS adds directories, and has no versions of them"}}},
        {"Subversion",
         {{Skill::labels, "Subversion has no labels for versions of a file, only copies of directories"},
          {Skill::directoriesByThemselves, "Subversion commits directories, and checks none out or in"}}},
        {"Git",
         {{Skill::locks, "Git has no locks: who changes one file at the same time meets when pushing"},
          {Skill::directoriesByThemselves,
           "Git keeps files, and knows directories only as parts of their names"}}},
        {"Mercurial",
         {{Skill::locks, "Mercurial has no locks: who changes one file at the same time meets when pushing"},
          {Skill::directoriesByThemselves,
           "Mercurial keeps files, and knows directories only as parts of their names"}}}};
    tools::Workplace place;
    const auto adapter = scenario::makeAdapter(GetParam(), place, "units");
    Reasons told;
    for (const Skill skill :
         {Skill::locks, Skill::labels, Skill::historyAcrossRenames, Skill::directoriesByThemselves}) {
        if (const std::string reason = adapter->cannot(skill); !reason.empty()) {
            told.emplace(skill, reason);
        }
    }
    EXPECT_EQ(told, lacking.at(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Tools, Skills, allTools, [](const auto &row) { return std::string(row.param); });

} // namespace
