// Tests the program's conventions: exit statuses, JSON, naming, properties, batches.
#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;
using testing::HasSubstr;
using tools::Ran;
using tools::Workplace;

namespace {

struct Program : testing::Test {
    tools::RcsProject project;
};

std::vector<nlohmann::json> jsonLines(const std::string &text) {
    std::vector<nlohmann::json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        objects.push_back(nlohmann::json::parse(line, nullptr, false));
    }
    return objects;
}

} // namespace

TEST_F(Program, EndsWith2ForACommandLineItDoesNotUnderstand) {
    EXPECT_EQ(project.cm({"chekout"}).exit, 2);
    EXPECT_THAT(project.cm({"chekout"}).err, HasSubstr("Did you mean 'checkout'?"));
    EXPECT_EQ(project.cm({"chekout", "--json"}).json()["error"]["suggestions"][0], "checkout");
    EXPECT_EQ(project.cm({"list", "--bogus"}).exit, 2);
    EXPECT_EQ(project.cm({}).exit, 2);
    EXPECT_THAT(project.cm({}).err, HasSubstr("no command is given; the commands are new, "));
}

TEST_F(Program, TellsHowAValueThatBeginsWithAMinusIsGiven) {
    project.lockProject();
    const Ran ran = project.onProject({"property", "set", "ReadWrite", "-l"});
    EXPECT_EQ(ran.exit, 2);
    EXPECT_THAT(ran.err, HasSubstr("put '--' before a value"));
    EXPECT_EQ(project.onProject({"property", "set", "ReadWrite", "--", "-l"}).exit, 0);
}

TEST_F(Program, RefusesAValueThatWouldCountAsAnother) {
    project.lockProject();
    const std::pair<const char *, const char *> values[] = {
        {"CMChildThreadTimeOut", "abc"}, {"CMSaveOnCheckOut", "Yse"}, {"OperationErrorPattern", "("}};
    for (const auto &[key, value] : values) {
        const auto before = project.onProject({"--json", "property", "get", key}).json()["value"];
        const Ran ran = project.onProject({"property", "set", key, value});
        EXPECT_EQ(ran.exit, 2) << key;
        EXPECT_THAT(ran.err, HasSubstr(std::string("can't be the value of ") + key));
        EXPECT_EQ(project.onProject({"--json", "property", "get", key}).json()["value"], before);
    }
    const Ran choice = project.onProject({"property", "set", "ReportLoadingError", "Bth"});
    EXPECT_EQ(choice.exit, 0);
    EXPECT_THAT(choice.err, HasSubstr("'Bth' is not one of its values"));
}

TEST_F(Program, RefusesNamesOfPropertiesThatNothingCouldRead) {
    project.lockProject();
    EXPECT_EQ(project.onProject({"property", "set", "", "x", "--metaclass", "RCS"}).exit, 2);
    EXPECT_EQ(project.onProject({"property", "set", "bad key<&", "x", "--metaclass", "RCS"}).exit, 2);
    EXPECT_EQ(project.onProject({"property", "set", "Key", "x", "--metaclass", "RCS "}).exit, 2);
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}

TEST_F(Program, WarnsOfAnotherValueThatStillHolds) {
    ASSERT_EQ(project.cm({"new", "plain/p", "--tool", "RCS"}).exit, 0);
    const auto set = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"-p", "plain/p", "property", "set"});
        return project.cm(words);
    };
    ASSERT_EQ(set({"ReadOnly", "nearer", "--unit", "Controller"}).exit, 0);
    const Ran ran = set({"ReadOnly", "farther"});
    EXPECT_EQ(ran.exit, 0);
    EXPECT_THAT(ran.err, HasSubstr("'nearer' from Component Controller still applies"));
}

TEST_F(Program, GivesNewFilesTheDefaultHeaderThatItTells) {
    ASSERT_EQ(project.cm({"new", "plain/p", "--tool", "None"}).exit, 0);
    Workplace::write(project.directory() / "plain" / "header.txt", "$Revision$ ours\n");
    ASSERT_EQ(project
                  .cm({"-p", "plain/p", "property", "set", "HeaderFile", "$orpdirectory/header.txt", "--metaclass",
                       "RCS"})
                  .exit,
              0);
    ASSERT_EQ(project.cm({"-p", "plain/p", "tool", "RCS"}).exit, 0);
    const auto unit = project.cm({"-p", "plain/p", "--json", "header", "p"}).json()["unit"];
    EXPECT_EQ(unit["defaultHeader"], "$Revision$ ours\n");
    EXPECT_THAT(unit["header"].get<std::string>(), HasSubstr("$Revision$ ours"));
}

TEST_F(Program, AsksAtOpeningForTheStatesOnlyOfAProjectThatWorksThroughAProvider) {
    ASSERT_EQ(project.cm({"new", "plain/p", "--tool", "RCS"}).exit, 0);
    const auto set = [&](const char *key, const char *value, const char *metaclass) {
        return project.cm({"-p", "plain/p", "property", "set", key, value, "--metaclass", metaclass}).exit;
    };
    ASSERT_EQ(set("ShowCMStatus", "true", "General"), 0);
    ASSERT_EQ(set("RefreshCMStatusAtProjectOpenup", "Ask User", "RCS"), 0);
    ASSERT_EQ(set("RefreshCMStatusAtProjectOpenup", "Ask User", "SCC"), 0);
    EXPECT_THAT(project.cm({"-p", "plain/p", "list"}).err, testing::Not(HasSubstr("Refresh")));
    ASSERT_EQ(set("UseSCCtool", "YES", "General"), 0);
    const Ran ran = project.cm({"-p", "plain/p", "list"});
    EXPECT_EQ(ran.exit, 0);
    EXPECT_THAT(ran.err, HasSubstr("Refresh the configuration management status"));
}

TEST_F(Program, EndsWith2WhereNoProjectIsNamedAndTheDirectoryHoldsNone) {
    const Ran ran = project.cm({"list"});
    EXPECT_EQ(ran.exit, 2);
    EXPECT_THAT(ran.err, HasSubstr("-p PROJECT"));
}

TEST_F(Program, TakesTheOneProjectOfTheCurrentDirectory) {
    const Ran ran = project.shell("cd " + tools::quoted(project.project().string()) + " && " +
                                  tools::quoted(ORCHARD_CM_PROGRAM) + " list --paths");
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump\n"));
}

TEST_F(Program, EndsWith3ForAProjectThatIsNotThere) {
    const Ran ran = project.cm({"-p", "nothing.orp", "--json", "list"});
    EXPECT_EQ(ran.exit, 3);
    EXPECT_THAT(ran.json()["error"]["message"].get<std::string>(), HasSubstr("nothing.orp"));
}

TEST_F(Program, NamesThePlaceInABrokenUnitFileAndGoesOnWithoutThatUnit) {
    const fs::path pump = project.fileOf("Pump");
    fs::permissions(pump, fs::perms::owner_write, fs::perm_options::add);
    const std::string broken = Workplace::read(pump) + "<junk";
    Workplace::write(pump, broken);
    const Ran ran = project.onProject({"list"});
    EXPECT_EQ(ran.exit, 0);
    EXPECT_THAT(ran.err, testing::ContainsRegex(pump.filename().string() + ":[0-9]+:[0-9]+: "));
    EXPECT_EQ(project.show("Pump")["state"], "U");
    EXPECT_EQ(Workplace::read(pump), broken);
}

TEST_F(Program, EndsWith3AndNamesThePlaceInABrokenProjectUnit) {
    const fs::path unit = project.project() / "station_ory" / "station.ory";
    fs::permissions(unit, fs::perms::owner_write, fs::perm_options::add);
    Workplace::write(unit, Workplace::read(unit) + "<junk");
    const Ran ran = project.onProject({"list"});
    EXPECT_EQ(ran.exit, 3);
    EXPECT_THAT(ran.err, testing::ContainsRegex("station.ory:[0-9]+:[0-9]+: "));
}

TEST_F(Program, RefusesToMakeAProjectOverAnother) {
    const Ran ran = project.cm({"new", (project.project() / "station").string()});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}

TEST_F(Program, GeneratesTheSameModelForTheSameNumber) {
    ASSERT_EQ(project.cm({"new", "one/big", "--units", "50"}).exit, 0);
    ASSERT_EQ(project.cm({"new", "two/big", "--units", "50"}).exit, 0);
    EXPECT_EQ(project.shell("diff -r one two").exit, 0);
    const Ran list = project.cm({"-p", "one/big.orp", "--json", "list"});
    EXPECT_EQ(list.json()["units"].size(), 51U) << "fifty units and the project";
}

TEST_F(Program, ListsALargeModelFromItsRecordUntilAFileChanges) {
    Workplace place;
    const fs::path cache = place.directory() / "cache";
    place.setEnvironment("XDG_CACHE_HOME", cache.string());
    ASSERT_EQ(place.cm({"new", "Big", "--units", "1200", "--tool", "RCS"}).exit, 0);
    const auto list = [&](const char *form) { return place.cm({"-p", "Big", form, "list"}).out; };
    const std::string first = list("--json");
    EXPECT_FALSE(fs::exists(cache)) << "files that are so young are not trusted";
    std::this_thread::sleep_for(
        std::chrono::milliseconds(2100)); // until the file times are old enough to be trusted
    EXPECT_TRUE(list("--json") == first);
    ASSERT_TRUE(fs::exists(cache / "orchard" / "workspaces"));
    EXPECT_TRUE(list("--json") == first);
    const fs::path file = place.directory() / "Big_ory" / "Plant.ocm";
    std::string text = Workplace::read(file);
    text.replace(text.find("$Revision$"), 10, "$Revision: 1.7 $");
    text.replace(text.find("$Locker$"), 8, "$Locker: ann $");
    Workplace::write(file, text);
    const std::string changed = list("--json");
    const auto plant = nlohmann::json::parse(changed)["units"][1];
    EXPECT_EQ(plant.value("version", ""), "1.7");
    EXPECT_EQ(plant.value("locker", ""), "ann");
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    EXPECT_TRUE(list("--json") == changed);
    EXPECT_TRUE(list("--json") == changed) << "version and locker come out of the record, too";
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::remove);
    EXPECT_EQ(nlohmann::json::parse(list("--json"))["units"][1]["state"], "RO");
}

TEST_F(Program, KeepsNoListOfAProjectThatWorksThroughAProvider) {
    Workplace place;
    const fs::path cache = place.directory() / "cache";
    place.setEnvironment("XDG_CACHE_HOME", cache.string());
    ASSERT_EQ(place.cm({"new", "Big", "--units", "1200", "--tool", "RCS"}).exit, 0);
    ASSERT_EQ(place.cm({"-p", "Big", "property", "set", "UseSCCtool", "YES", "--metaclass", "General"}).exit, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    EXPECT_EQ(place.cm({"-p", "Big", "list"}).exit, 0);
    EXPECT_FALSE(fs::exists(cache));
}

TEST_F(Program, SuggestsAnInstalledTool) {
    const Ran ran = project.onProject({"--json", "tool", "RSC"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["error"]["suggestions"][0], "RCS");
}

TEST_F(Program, ListsTheInstalledTools) {
    const Ran ran = project.cm({"tools", "--json"});
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("\"name\":\"RCS\""));
}

TEST_F(Program, ChoosesAToolAndKeepsTheChoice) {
    ASSERT_EQ(project.cm({"new", "plain/p"}).exit, 0);
    EXPECT_EQ(project.cm({"-p", "plain/p.orp", "tool", "rcs"}).exit, 0);
    EXPECT_EQ(project.cm({"-p", "plain/p.orp", "--json", "tool"}).json()["tool"], "RCS");
}

TEST_F(Program, SaysThatNoToolIsChosen) {
    ASSERT_EQ(project.cm({"new", "plain/p"}).exit, 0);
    ASSERT_EQ(project.cm({"-p", "plain/p.orp", "tool", "None"}).exit, 0);
    const Ran ran = project.cm({"-p", "plain/p.orp", "--json", "checkout", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["messages"][0]["kind"], "error");
}

TEST_F(Program, ExpandsAPropertyForAUnitWithoutRunningIt) {
    const Ran ran = project.onProject({"expand", "--property", "CheckOut", "--unit", "Pump", "--mode", "rw"});
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("rcs.sh\" get -f -l "));
    EXPECT_THAT(ran.out, HasSubstr(project.fileOf("Pump").filename().string()));
    EXPECT_EQ(project.locksOf(project.fileOf("Pump")), "");
}

TEST_F(Program, ExpandsATemplateWithAllArguments) {
    const Ran ran = project.onProject({"expand", "--unit", "Pump", "--label", "two words", "--log", "a comment",
                                       "$label|$log|$Unit|($label ? yes : no)"});
    EXPECT_EQ(ran.out, "\"two words\"|a comment|" + project.fileOf("Pump").filename().string() + "|yes\n")
        << ran.err;
}

TEST_F(Program, ShowsTheHalfExpandedTextAndTheNameThatStopsIt) {
    const Ran ran = project.onProject({"--json", "expand", "--unit", "Pump", "co $Unit $nobody $Unit"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["expanded"], "co " + project.fileOf("Pump").filename().string() + " $nobody $Unit");
    EXPECT_EQ(ran.json()["unresolved"][0], "$nobody");
    EXPECT_THAT(ran.json()["error"]["message"].get<std::string>(), HasSubstr("'$nobody' could not be resolved"));
}

TEST_F(Program, FollowsAnUnresolvedNameThroughTheProperties) {
    project.lockProject();
    ASSERT_EQ(project.onProject({"property", "set", "Mine", "a $nobody", "--metaclass", "RCS"}).exit, 0);
    const Ran ran = project.onProject({"--json", "expand", "$Mine"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["unresolved"], (nlohmann::json{"$Mine", "$nobody"})) << ran.out;
}

TEST_F(Program, TellsWhichPropertiesReferToThemselves) {
    project.lockProject();
    ASSERT_EQ(project.onProject({"property", "set", "Mine", "a $Other", "--metaclass", "RCS"}).exit, 0);
    ASSERT_EQ(project.onProject({"property", "set", "Other", "b ${mine}", "--metaclass", "RCS"}).exit, 0);
    const Ran ran = project.onProject({"--json", "expand", "$Mine"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["unresolved"], (nlohmann::json{"$Mine", "$Other", "${mine}"})) << ran.out;
    EXPECT_EQ(ran.json()["error"]["message"], "'${mine}' refers to itself, which is in the value of '$Other', "
                                              "in that of '$Mine'");
}

TEST_F(Program, TellsWhereAPropertyComesFrom) {
    const auto source = [&] {
        return project.onProject({"--json", "property", "get", "ReadWrite"}).json()["source"].get<std::string>();
    };
    EXPECT_THAT(source(), HasSubstr("RCS"));
    project.lockProject();
    ASSERT_EQ(project.onProject({"property", "set", "ReadWrite", "--", "-l -M"}).exit, 0);
    EXPECT_EQ(source(), "project station");
    EXPECT_EQ(project.onProject({"property", "get", "ReadWrite"}).out, "-l -M\n");
    EXPECT_THAT(project.onProject({"property", "list", "readwrite"}).out, HasSubstr("project station"));
}

TEST_F(Program, SetsNoPropertyInAFileThatIsCheckedIn) {
    const fs::path file = project.fileOf("station");
    const std::string before = Workplace::read(file);
    const Ran ran = project.onProject({"--json", "property", "set", "ReadWrite", "x"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.json()["error"]["message"].get<std::string>(), HasSubstr("station.ory"));
    EXPECT_THAT(ran.json()["error"]["hint"].get<std::string>(), HasSubstr("--lock"));
    EXPECT_EQ(Workplace::read(file), before);
}

TEST_F(Program, SetsAPropertyOnOneUnit) {
    const Ran locked = project.onProject({"checkout", "--lock", "Pump"});
    ASSERT_EQ(locked.exit, 0) << locked.out << locked.err;
    ASSERT_EQ(project.onProject({"property", "set", "ReadWrite", "mine", "--unit", "Pump"}).exit, 0);
    const auto value = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"--json", "property", "get", "ReadWrite"});
        return project.onProject(words).json()["value"].get<std::string>();
    };
    EXPECT_EQ(value({"--unit", "Pump"}), "mine");
    EXPECT_NE(value({"--unit", "Valve"}), "mine");
    EXPECT_NE(value({}), "mine");
}

TEST_F(Program, RefusesANewKeyWithoutItsMetaclassAndSuggestsOne) {
    const Ran ran = project.onProject({"--json", "property", "set", "ReadWrit", "x"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["error"]["suggestions"][0], "ReadWrite");
}

TEST_F(Program, RunsABatchOnOneLoadedModelAndNamesTheLineThatFails) {
    const Ran ran = project.onProject({"batch"}, "# first\n\nshow 'Drives/Pump'\nshow Pumb\nlist\n");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("Class Drives/Pump"));
    EXPECT_THAT(ran.err, HasSubstr("standard input:4: the model has no unit 'Pumb'"));
    EXPECT_THAT(ran.out, testing::Not(HasSubstr("STATE"))) << "the batch ends at the line that fails";
}

TEST_F(Program, GoesOnInABatchIfAskedTo) {
    const fs::path batch = project.directory() / "lines ü.txt";
    Workplace::write(batch, "show Pumb\nnonsense\nshow 'open\nlist --paths\n");
    const Ran ran = project.onProject({"--json", "batch", "--keep-going", batch.string()});
    const auto objects = jsonLines(ran.out);
    ASSERT_EQ(objects.size(), 5U) << ran.out;
    EXPECT_EQ(objects[0]["line"], 1);
    EXPECT_EQ(objects[0]["exit"], 1);
    EXPECT_EQ(objects[1]["exit"], 2);
    EXPECT_EQ(objects[2]["exit"], 2);
    EXPECT_EQ(objects[3]["ok"], true);
    EXPECT_EQ(objects[4]["command"], "batch");
    EXPECT_EQ(objects[4]["failedLines"], (nlohmann::json{1, 2, 3}));
    EXPECT_EQ(ran.exit, 1);
}

TEST_F(Program, WritesTheDebugTraceAndTheLogWhenAskedTo) {
    const fs::path log = project.directory() / "log";
    const Ran ran = project.onProject({"--trace", "--log", log.string(), "checkout", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.err;
    EXPECT_THAT(ran.err, HasSubstr("+++ "));
    EXPECT_THAT(Workplace::read(log), HasSubstr("Executing the following command to check out the file: "));
    EXPECT_THAT(project.onProject({"checkout", "Pump"}).err, testing::Not(HasSubstr("+++ ")));
}

TEST_F(Program, FailsIfItsOutputCannotBeWritten) {
    const Ran ran = project.shell(tools::quoted(ORCHARD_CM_PROGRAM) + " -p " +
                                  tools::quoted(project.projectFile().string()) + " list >/dev/full");
    EXPECT_EQ(ran.exit, 1);
}
