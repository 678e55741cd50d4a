// Tests move, rename and delete: model, files and RCS archives agree afterwards, or stay as they were.
#include "tests/tools/DailyCycle.h"

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using tools::Ran;

namespace {

struct Restructure : tools::DailyCycle {
    /// All owners can be written.
    void lockAll() {
        const Ran ran = run({"checkout", "--lock", "--recursive", "station"});
        ASSERT_EQ(ran.exit, 0) << ran.out << ran.err;
    }
    /// Each of the three fails with this error, and changes nothing.
    void expectAllRefused(const std::string &error) {
        for (const auto &words : {std::vector<std::string>{"rename", "Pump", "Lifter"},
                                  {"move", "Pump", "Control"},
                                  {"delete", "Pump"}}) {
            const Ran ran = run(words);
            EXPECT_EQ(ran.exit, 1) << words[0] << ran.out;
            EXPECT_THAT(errorOf(ran), HasSubstr(error));
            EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n")) << words[0];
            EXPECT_TRUE(fs::exists(pump) && isArchived(pump)) << words[0];
        }
    }
    fs::path units = project.project() / "station_ory";
    std::string paths() { return project.onProject({"list", "--paths"}).out; }
    [[nodiscard]] bool isArchived(const fs::path &file) const {
        return fs::exists(tools::RcsProject::archiveOf(file));
    }
};

} // namespace

TEST_F(Restructure, RenamesAUnitItsFileAndItsArchive) {
    lockAll();
    const Ran ran = run({"rename", "Pump", "Lifter"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["outcome"], "renamed");
    EXPECT_EQ(first(ran)["newUnit"], "Drives/Lifter");
    EXPECT_THAT(paths(), HasSubstr("Drives/Lifter\n"));
    EXPECT_TRUE(fs::exists(units / "Lifter.ocl"));
    EXPECT_TRUE(isArchived(units / "Lifter.ocl"));
    EXPECT_FALSE(fs::exists(pump));
    EXPECT_FALSE(isArchived(pump));
}
TEST_F(Restructure, MovesAUnitIntoTheDirectoryOfItsNewOwner) {
    lockAll();
    const Ran ran = run({"move", "Pump", "Control"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(paths(), HasSubstr("Control/Pump\n"));
    EXPECT_TRUE(isArchived(units / "Control" / "Pump.ocl"));
    EXPECT_FALSE(fs::exists(pump));
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}
TEST_F(Restructure, MovesASubsystemWithItsDirectory) {
    lockAll();
    const Ran ran = run({"move", "Control", "Drives"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(paths(), HasSubstr("Drives/Control/PumpController\n"));
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
    EXPECT_EQ(run({"history", "PumpController"}).exit, 0) << "the archives went along";
}
TEST_F(Restructure, MovesAUnitWithinOneDirectoryInTheModelAlone) {
    lockAll();
    const Ran ran = run({"move", "Pump", "Operator"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(paths(), HasSubstr("Operator/Pump\n"));
    EXPECT_TRUE(isArchived(pump));
}
TEST_F(Restructure, DeletesAUnitFromModelAndArchive) {
    lockAll();
    const Ran ran = run({"delete", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["outcome"], "deleted");
    EXPECT_THAT(paths(), Not(HasSubstr("Pump\n")));
    EXPECT_FALSE(fs::exists(pump));
    EXPECT_FALSE(isArchived(pump)) << "RCS keeps it in a directory of its own";
    EXPECT_THAT(run({"archive"}).out, Not(HasSubstr("\"Pump.ocl\"")));
}
TEST_F(Restructure, DeletesWhatLiesBelowOnlyWhenAskedTo) {
    lockAll();
    const Ran refused = run({"delete", "Drives"});
    EXPECT_EQ(refused.exit, 2);
    EXPECT_THAT(errorOf(refused), HasSubstr("more units below"));
    EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
    const Ran ran = run({"delete", "--recursive", "Drives"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(paths(), Not(HasSubstr("Drives/")));
}
TEST_F(Restructure, IsRefusedWhereTheOwnersFileIsReadOnly) {
    for (const auto &words :
         {std::vector<std::string>{"rename", "Pump", "Lifter"}, {"move", "Pump", "Control"}, {"delete", "Pump"}}) {
        const Ran ran = run(words);
        EXPECT_EQ(ran.exit, 1) << ran.out;
        EXPECT_THAT(errorOf(ran), HasSubstr("can't " + words[0] + " it"));
        EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
        EXPECT_TRUE(isArchived(pump));
    }
}
TEST_F(Restructure, ThatTheToolFailsLeavesModelAndFilesAsTheyWere) {
    lockAll();
    const std::string before = read(pump);
    project.replaceProgram("sh", "echo 'sh: the archive is gone' >&2; exit 1");
    for (const auto &words :
         {std::vector<std::string>{"rename", "Pump", "Lifter"}, {"move", "Pump", "Control"}, {"delete", "Pump"}}) {
        const Ran ran = run(words);
        EXPECT_EQ(ran.exit, 1) << ran.out;
        EXPECT_THAT(reason(ran), HasSubstr("the model and its files are unchanged")) << ran.out;
        EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
        EXPECT_EQ(read(pump), before);
    }
}
TEST_F(Restructure, OfAProjectWithAProviderIsNotDoneWithoutTheProvider) {
    lockAll();
    ASSERT_EQ(run({"tool", "None"}).exit, 0);
    ASSERT_EQ(run({"property", "set", "UseSCCtool", "YES"}).exit, 0);
    expectAllRefused("");
}
TEST_F(Restructure, IsRefusedWhereTheToolCanNotBeLookedUp) {
    lockAll();
    project.shell("sed -i '/^component /d; /^configuration /d' " + tools::quoted(project.projectFile().string()));
    expectAllRefused("neither an active component nor a configuration");
    EXPECT_EQ(run({"delete", "--no-tool", "Pump"}).exit, 0);
}
TEST_F(Restructure, OfSeveralUnitsReportsTheDeletedOnesAsDeletedAndTheOthersWithTheirOwnReason) {
    lockAll();
    project.replaceProgram("sh", "case \"$*\" in *Valve*) echo 'sh: bob locks it' >&2; exit 1;; *Panel*) exit 0;; "
                                 "esac; exec /bin/sh \"$@\"");
    const Ran ran = run({"delete", "Pump", "Valve", "Panel"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    const auto items = ran.json()["items"];
    ASSERT_EQ(items.size(), 3U) << ran.out;
    EXPECT_EQ(items[0]["outcome"], "deleted");
    EXPECT_FALSE(items[0].contains("reason")) << items[0];
    EXPECT_EQ(items[1]["outcome"], "failed");
    EXPECT_THAT(items[1].value("reason", ""), HasSubstr("bob locks it"));
    EXPECT_THAT(items[1].value("reason", ""), testing::EndsWith("; the unit and its files are unchanged"));
    EXPECT_EQ(items[2]["reason"], "the tool did nothing; the unit and its files are unchanged");
    EXPECT_THAT(paths(), Not(HasSubstr("Drives/Pump\n")));
    EXPECT_THAT(paths(), HasSubstr("Drives/Valve\n"));
    EXPECT_TRUE(isArchived(project.fileOf("Valve")));
}
TEST_F(Restructure, AUnitThatIsGoneThoughItsCommandFailedIsReportedAsFailed) {
    lockAll();
    project.replaceProgram(
        "sh", "/bin/sh \"$@\" || exit; case \"$*\" in *Valve*) echo 'sh: no entry in the log' >&2; exit 1;; esac");
    const Ran ran = run({"delete", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    const auto items = ran.json()["items"];
    ASSERT_EQ(items.size(), 2U) << ran.out;
    EXPECT_EQ(items[0]["outcome"], "deleted");
    EXPECT_EQ(items[1]["outcome"], "failed");
    EXPECT_THAT(items[1].value("reason", ""), HasSubstr("no entry in the log"));
    EXPECT_THAT(items[1].value("reason", ""), testing::EndsWith("have changed nevertheless, check the archive"));
}
TEST_F(Restructure, AToolThatIsKilledHalfWayLeavesModelAndFilesAndTheUserIsSentToTheArchive) {
    lockAll();
    const std::string before = read(pump);
    project.replaceProgram("mv", "/bin/mv \"$@\"; kill -9 $PPID"); // once the archive has its new name
    const Ran ran = run({"rename", "Pump", "Lifter"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(reason(ran), HasSubstr("killed by signal 9"));
    EXPECT_THAT(reason(ran), testing::EndsWith("the model and its files are unchanged, check the archive"));
    EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
    EXPECT_EQ(read(pump), before);
    EXPECT_FALSE(isArchived(pump));
}
TEST_F(Restructure, ANameThatNoTemplateCanHoldIsTheReasonThatIsGiven) {
    // Each name is valid alone; after the directory, the path reads as a conditional.
    lockAll();
    ASSERT_EQ(run({"rename", "Control", "Con(trol"}).exit, 0);
    const Ran ran = run({"rename", "AlarmList", "Which?)"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(errorOf(ran), HasSubstr("which a command template could take for a condition"));
    ASSERT_EQ(run({"rename", "Pump", "Which?)"}).exit, 0);
    const Ran moved = run({"move", "Which?)", "Con(trol"});
    EXPECT_EQ(moved.exit, 1) << moved.out;
    EXPECT_THAT(reason(moved), HasSubstr("Con(trol/Which?).ocl can't be given to a tool: it contains a \"(\""));
    EXPECT_THAT(paths(), HasSubstr("Drives/Which?)\n"));
}
TEST_F(Restructure, AFileThatTheToolTakesElsewhereIsToldAndFails) {
    lockAll();
    const fs::path elsewhere = project.directory() / "elsewhere.ocl";
    for (const auto &words : {std::vector<std::string>{"rename", "Pump", "Lifter"}, {"move", "Pump", "Control"}}) {
        project.replaceProgram("sh",
                               "mv " + tools::quoted(pump.string()) + " " + tools::quoted(elsewhere.string()));
        const Ran ran = run(words);
        EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
        EXPECT_THAT(ran.out + ran.err, HasSubstr("the file is neither here nor at")) << words[0];
        EXPECT_THAT(reason(ran), HasSubstr("a file is not where it belongs; the model is unchanged")) << ran.out;
        fs::rename(elsewhere, pump);
        EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
    }
}
TEST_F(Restructure, OfAUnitOutsideTheArchiveNeedsNoTool) {
    lockAll();
    fs::remove(tools::RcsProject::archiveOf(pump));
    const Ran ran = run({"rename", "--no-tool", "Pump", "Lifter"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_TRUE(fs::exists(units / "Lifter.ocl"));
}
TEST_F(Restructure, RefusesNamesThatAreTaken) {
    lockAll();
    const Ran ran = run({"rename", "Pump", "Valve"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
}
