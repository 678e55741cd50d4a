// Check out on real RCS archives, by the real program.
#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::Ran;
using tools::Workplace;

namespace {

constexpr auto pumpText = "One pump with its motor protection.";
constexpr auto newPumpText = "One pump, changed by bob.";

bool isWritable(const fs::path &file) {
    return (fs::status(file).permissions() & fs::perms::owner_write) != fs::perms::none;
}

struct Checkout : testing::Test {
    tools::RcsProject project;
    fs::path pump = project.fileOf("Pump");

    Ran checkout(std::vector<std::string> words) {
        words.insert(words.begin(), {"--json", "checkout"});
        return project.onProject(words);
    }
    static nlohmann::json first(const Ran &ran) { return ran.json()["items"][0]; }
    static std::string read(const fs::path &file) { return Workplace::read(file); }
};

} // namespace

TEST_F(Checkout, BringsANewVersionIntoTheModelReadOnly) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran = project.onProject({"batch"}, "show Pump\ncheckout Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(pumpText));
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: checked out, file changed, version 1.1 -> 1.2, RO"));
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
    EXPECT_FALSE(isWritable(pump));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}

TEST_F(Checkout, LocksAFileToWorkOnIt) {
    const Ran ran = checkout({"--lock", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["before"]["state"], "RO");
    EXPECT_EQ(first(ran)["after"]["state"], "RW");
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}

TEST_F(Checkout, FailsWhereAnotherHoldsTheLock) {
    project.lockElsewhere("bob", pump);
    const std::string before = read(pump);
    const Ran ran = checkout({"--lock", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "failed");
    EXPECT_THAT(ran.json()["window"].get<std::string>(), HasSubstr("bob"));
    EXPECT_EQ(read(pump), before);
    EXPECT_FALSE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "bob: 1.1");
}

TEST_F(Checkout, TellsAFailureAlsoWhenALaterUnitSucceeds) {
    project.lockElsewhere("bob", pump);
    const Ran ran = checkout({"--lock", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "failed");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "checked out") << ran.out;
}

TEST_F(Checkout, OverwritesAWritableFileAfterAYes) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran = checkout({"--yes", "Pump"});
    EXPECT_EQ(first(ran)["fileChanged"], true) << ran.out;
    EXPECT_THAT(read(pump), HasSubstr(newPumpText));
    EXPECT_EQ(ran.json()["messages"][0]["kind"], "question");
}

TEST_F(Checkout, KeepsAWritableFileAfterANo) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    Workplace::write(pump, read(pump) + "<!-- mine -->\n");
    const std::string mine = read(pump);
    const Ran ran = checkout({"--no", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "skipped");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "checked out") << ran.out;
    EXPECT_EQ(read(pump), mine);
}

TEST_F(Checkout, TakesNoForAnAnswerWhereNobodyCanBeAsked) {
    project.shell("chmod u+w " + tools::quoted(pump.string()));
    const std::string before = read(pump);
    const Ran ran = project.onProject({"checkout", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.err, HasSubstr("nobody to ask"));
    EXPECT_THAT(ran.out, HasSubstr("skipped"));
    EXPECT_EQ(read(pump), before);
}

TEST_F(Checkout, AnswersAllQuestionsWithOneYesToAll) {
    const fs::path valve = project.fileOf("Valve");
    project.shell("chmod u+w " + tools::quoted(pump.string()) + " " + tools::quoted(valve.string()));
    const Ran ran = checkout({"--yes-to-all", "Pump", "Valve"});
    std::size_t questions = 0;
    for (const auto &message : ran.json()["messages"]) {
        questions += message["kind"] == "question" ? 1U : 0U;
    }
    EXPECT_EQ(questions, 1U) << ran.out;
}

TEST_F(Checkout, BringsAMissingFileBack) {
    // The model is opened before the file is lost.
    project.replaceProgram("lose", "rm -f " + tools::quoted(pump.string()));
    const Ran lost = project.shell("lose; ls");
    EXPECT_FALSE(fs::exists(pump));
    const Ran ran = checkout({"Pump"});
    EXPECT_EQ(ran.exit, 1) << "a unit whose file is missing is a stub, which is left out: " << ran.out;
    EXPECT_THAT(first(ran)["reason"].get<std::string>(), HasSubstr("not loaded"));
    const Ran archive = checkout({"--archive", pump.string()});
    EXPECT_EQ(archive.exit, 0) << archive.out << archive.err;
    EXPECT_TRUE(fs::exists(pump));
    EXPECT_EQ(first(archive)["after"]["state"], "RO");
}

TEST_F(Checkout, FailsWhereTheArchiveIsGone) {
    fs::remove(tools::RcsProject::archiveOf(pump));
    const std::string before = read(pump);
    const Ran ran = checkout({"Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(first(ran)["outcome"], "failed");
    EXPECT_EQ(read(pump), before);
    EXPECT_EQ(project.show("Pump")["state"], "RO");
}

TEST_F(Checkout, TakesTheVersionThatALabelNames) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    ASSERT_EQ(checkout({"Pump"}).exit, 0);
    const Ran ran = checkout({"--label", "1.1", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out;
    EXPECT_EQ(first(ran)["after"]["version"], "1.1");
    EXPECT_THAT(read(pump), HasSubstr(pumpText));
}

TEST_F(Checkout, WorksOnAllUnitsBelowWithRecursive) {
    const fs::path level = project.fileOf("LevelSensor");
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    project.changeElsewhere("bob", level, "from a current of 4 to 20 mA", "from a radar");
    const Ran ran =
        project.onProject({"batch", "--json"}, "checkout --recursive Drives\nshow Pump\nshow LevelSensor\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
    EXPECT_THAT(ran.out, HasSubstr("from a radar\""));
    for (const auto *const name :
         {"Drives\"", "Drives/Pump", "Drives/Valve", "Drives/Sensors", "Drives/Sensors/FlowSensor"}) {
        EXPECT_THAT(ran.out, HasSubstr(name));
    }
    EXPECT_THAT(ran.out, Not(HasSubstr("Operator/Panel")));
}

TEST_F(Checkout, ReplacesAnEmbeddedFileAndLeavesTheModelAlone) {
    const fs::path wiring = project.fileOf("wiring.txt");
    project.changeElsewhere("bob", wiring, "4-20 mA", "0-10 V");
    const Ran ran = checkout({"wiring.txt"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["fileChanged"], true);
    EXPECT_EQ(first(ran)["newObject"], false);
    EXPECT_THAT(read(wiring), HasSubstr("0-10 V"));
}

TEST_F(Checkout, FromTheArchiveReloadsAUnitThatTheModelKnows) {
    project.changeElsewhere("bob", pump, pumpText, newPumpText);
    const Ran ran =
        project.onProject({"batch"}, "checkout --archive " + tools::quoted(pump.string()) + "\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
}

TEST_F(Checkout, FromTheArchiveWorksOnAWholeDirectoryWithRecursive) {
    const fs::path controller = project.fileOf("PumpController");
    project.changeElsewhere("bob", controller, "Starts and stops the pumps", "Runs the pumps");
    const Ran ran = project.onProject({"batch", "--json"}, "checkout --archive --recursive " +
                                                               tools::quoted(controller.parent_path().string()) +
                                                               "\nshow PumpController\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Control/LevelRegulator"));
    EXPECT_THAT(ran.out, HasSubstr("Runs the pumps by the level"));
}

TEST_F(Checkout, KeepsTheUnitWhereTheNewVersionCannotBeRead) {
    project.changeElsewhere("bob", pump, "<description>", "<descript");
    const Ran ran = project.onProject({"batch", "--keep-going"}, "checkout Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: failed"));
    EXPECT_THAT(ran.err, HasSubstr(pump.filename().string() + ":"));
    EXPECT_THAT(ran.out, HasSubstr(pumpText)) << "the loaded unit holds what it held";
}

TEST_F(Checkout, SuggestsUnitsForAMistypedName) {
    const Ran ran = checkout({"Pumb"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["error"]["suggestions"][0], "Pump");
}

TEST_F(Checkout, ChecksNothingOutWhereOneNameIsWrong) {
    const Ran ran = checkout({"--lock", "Pump", "Nothing"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_FALSE(isWritable(pump));
}
