// Tests check in, lock, unlock and undo on real RCS archives.
#include "tests/tools/DailyCycle.h"

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::Ran;
using tools::Workplace;

namespace {

constexpr auto pumpText = "One pump with its motor protection.";
constexpr auto newPumpText = "One pump, changed by anna.";

struct Checkin : tools::DailyCycle {
    Checkin() {
        lock("Pump");
        change(pump, pumpText, newPumpText);
    }
};
/// A unit that is not loaded is left out; the comment of the other names its file.
struct CheckinWithAStub : Checkin {
    CheckinWithAStub() {
        const fs::path valve = project.fileOf("Valve");
        fs::permissions(valve, fs::perms::owner_write, fs::perm_options::add);
        Workplace::write(valve, read(valve) + "<junk");
    }
    const std::vector<std::string> words{"--yes",       "checkin", "Drives/Valve",
                                         "Drives/Pump", "--log",   "takes the code from Valve.ocl"};
};
struct Locks : tools::DailyCycle {};
struct Undo : tools::DailyCycle {
    /// In the archive, Pump has the name Lifter; the owner's file is writable.
    void checkOutUnderAnotherName() {
        project.changeElsewhere("bob", pump, "<name>Pump</name>", "<name>Lifter</name>");
        lock("Pump");
        lock("Drives");
        change(pump, "<name>Lifter</name>", "<name>Pump</name>");
    }
};

} // namespace

TEST_F(Checkin, PutsANewVersionIntoTheArchiveWithItsComment) {
    const Ran ran = run({"checkin", "--log", "the pump is anna's now", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(first(ran)["outcome"], "checked in");
    EXPECT_EQ(first(ran)["before"]["version"], "1.1");
    EXPECT_EQ(first(ran)["after"]["version"], "1.2");
    EXPECT_EQ(first(ran)["after"]["state"], "RO");
    EXPECT_FALSE(isWritable(pump));
    EXPECT_THAT(rlog(pump), HasSubstr("the pump is anna's now"));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
    EXPECT_THAT(project.shell("co -q -p " + tools::quoted(pump.string())).out, HasSubstr(newPumpText));
}
TEST_F(CheckinWithAStub, CountsTheUnitThatTheToolWorkedOnWhateverTheCommentNames) {
    const Ran ran = project.onProject(words);
    EXPECT_EQ(ran.exit, 1) << ran.err;
    EXPECT_EQ(ran.out, "Drives/Valve: failed: the unit is not loaded, and was left out\n"
                       "Drives/Pump: checked in, version 1.1 -> 1.2, RW -> RO\n");
}
TEST_F(CheckinWithAStub, CountsTheUnitThatTheToolWorkedOnInJsonToo) {
    const Ran ran = run(words);
    EXPECT_EQ(ran.exit, 1) << ran.err;
    const auto items = ran.json()["items"];
    ASSERT_EQ(items.size(), 2U) << ran.out;
    EXPECT_EQ(items[0]["unit"], "Drives/Valve");
    EXPECT_EQ(items[0]["outcome"], "failed");
    EXPECT_EQ(items[0]["reason"], "the unit is not loaded, and was left out");
    EXPECT_EQ(items[1]["unit"], "Drives/Pump");
    EXPECT_EQ(items[1]["outcome"], "checked in");
    EXPECT_EQ(items[1]["after"]["version"], "1.2");
    EXPECT_FALSE(items[1].contains("reason"));
}
TEST_F(Checkin, LeavesTheFileForMoreWorkWithTheModeReadWrite) {
    const Ran ran = run({"checkin", "--log=x y", "--mode", "rw", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.2");
}
TEST_F(Checkin, TakesTheCommentFromAFileOfSeveralLines) {
    const fs::path comment = project.directory() / "comment";
    tools::Workplace::write(comment, "\r\nFirst line\r\n\r\n  - a detail; another & more \r\n\n");
    const Ran ran = run({"checkin", "--log-file", comment.string(), "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(rlog(pump), HasSubstr("First line\n\n  - a detail; another & more\n"));
}
TEST_F(Checkin, TakesTheCommentFromTheStandardInput) {
    const Ran ran = project.onProject({"checkin", "--log-file=-", "Pump"}, "from the input");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(rlog(pump), HasSubstr("from the input"));
}
TEST_F(Checkin, AsksForACommentWhereNobodyCanWriteOne) {
    const Ran ran = run({"checkin", "Pump"});
    EXPECT_EQ(ran.exit, 2);
    EXPECT_THAT(errorOf(ran), HasSubstr("no comment"));
    EXPECT_THAT(ran.out, HasSubstr("--log-file"));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}
TEST_F(Checkin, RefusesAnEmptyComment) {
    EXPECT_EQ(run({"checkin", "--log", " ", "Pump"}).exit, 1);
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}
TEST_F(Checkin, RefusesTheCharactersThatTheToolsSetRefusesAndNamesThem) {
    for (const char c : std::string("\"$`\\>")) {
        const Ran ran = run({"checkin", std::string("--log=a") + c + "b", "Pump"});
        EXPECT_EQ(ran.exit, 2) << c;
        EXPECT_THAT(errorOf(ran), HasSubstr(std::string("the character ") + c));
    }
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}
TEST_F(Checkin, RunsNothingOfAComment) {
    const fs::path proof = project.directory() / "proof";
    const std::string touch = "touch " + tools::quoted(proof.string());
    for (const std::string &log : {"a;" + touch, "a\n" + touch, "$(" + touch + ")", "`" + touch + "`",
                                   "a\" ;" + touch + ";\"", "a'; " + touch + ";'", "a && " + touch, "| " + touch,
                                   "-x" + touch, "a > " + proof.string(), "(x ? " + touch + ")"}) {
        static_cast<void>(run({"checkin", "--log=" + log, "--mode=rw", "Pump"}));
        EXPECT_FALSE(fs::exists(proof)) << log;
    }
}
TEST_F(Checkin, RefusesACommentThatATemplateWouldTakeForItsOwn) {
    const Ran ran = run({"checkin", "--log=why (so ? or : so)", "Pump"});
    EXPECT_EQ(ran.exit, 2);
    EXPECT_THAT(errorOf(ran), HasSubstr("conditional"));
    EXPECT_EQ(run({"checkin", "--log=a mark (x), a sign? and more", "Pump"}).exit, 0);
}
TEST_F(Checkin, GivesTheNewVersionALabel) {
    const Ran ran = run({"checkin", "--log=x", "--label=summer", "Pump"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(rlog(pump), HasSubstr("summer: 1.2"));
}
TEST_F(Checkin, FailsForAUnitThatIsNotCheckedOut) {
    const Ran ran = project.onProject({"--json", "checkin", "--log=x", "Valve", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "failed") << ran.out;
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "checked in") << "the others are worked on all the same";
}
TEST_F(Checkin, WorksOnAllUnitsBelowWithRecursive) {
    ASSERT_EQ(run({"checkout", "--lock", "--recursive", "Drives"}).exit, 1) << "Pump is writable: No";
    const Ran ran = run({"checkin", "--recursive", "--log=all of it", "Drives"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["items"].size(), 6U);
    EXPECT_EQ(first(ran)["before"]["version"], first(ran)["after"]["version"]) << "unchanged files get no version";
}
TEST_F(Checkin, WritesTheCommentInTheEditorOnATerminal) {
    const fs::path editor = project.directory() / "editor";
    tools::Workplace::write(editor,
                            "#!/bin/sh\ngrep -q 'Drives/Pump' \"$1\" && sed -i '1i from the editor' \"$1\"\n");
    tools::Workplace::makeExecutable(editor);
    project.setEnvironment("VISUAL", tools::quoted(editor.string()));
    const Ran ran = project.shell("script -qec " +
                                  tools::quoted(tools::quoted(ORCHARD_CM_PROGRAM) + " -p " +
                                                tools::quoted(project.projectFile().string()) + " checkin Pump") +
                                  " /dev/null");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(rlog(pump), HasSubstr("from the editor"));
}
TEST_F(Checkin, DoesNothingWhereTheEditorLeavesNoComment) {
    project.setEnvironment("VISUAL", "true");
    const Ran ran = project.shell("script -qec " +
                                  tools::quoted(tools::quoted(ORCHARD_CM_PROGRAM) + " -p " +
                                                tools::quoted(project.projectFile().string()) + " checkin Pump") +
                                  " /dev/null");
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(ran.out, HasSubstr("nothing was checked in"));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
}

TEST_F(Locks, AreTakenAndGivenUp) {
    const Ran locked = run({"lock", "Pump"});
    EXPECT_EQ(locked.exit, 0) << locked.out << locked.err;
    EXPECT_EQ(first(locked)["outcome"], "locked");
    EXPECT_TRUE(isWritable(pump));
    EXPECT_EQ(project.locksOf(pump), "anna: 1.1");
    const Ran unlocked = run({"unlock", "Pump"});
    EXPECT_EQ(unlocked.exit, 0) << unlocked.out << unlocked.err;
    EXPECT_FALSE(isWritable(pump));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}
TEST_F(Locks, ThatAnotherHoldsAreLeftToThem) {
    project.lockElsewhere("bob", pump);
    const Ran ran = run({"lock", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(reason(ran) + ran.out, HasSubstr("bob"));
    EXPECT_EQ(project.locksOf(pump), "bob: 1.1");
    EXPECT_FALSE(isWritable(pump));
}
TEST_F(Locks, OnesGivenUpBringTheArchivedUnitBackIntoTheModel) {
    lock("Pump");
    change(pump, pumpText, newPumpText);
    const Ran ran = project.onProject({"batch"}, "show Pump\nunlock Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out.substr(ran.out.find("unlocked")), HasSubstr(pumpText));
}
TEST_F(Locks, AreRefusedInAWordWhereTheToolHasNone) {
    project.lockProject();
    ASSERT_EQ(run({"property", "set", "LockItem", ""}).exit, 0);
    const Ran ran = run({"lock", "Pump"});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(errorOf(ran), HasSubstr("has no command for this (property LockItem is empty)"));
}

TEST_F(Undo, ThrowsTheChangeAwayAndReloadsTheUnit) {
    lock("Pump");
    change(pump, pumpText, newPumpText);
    const Ran ran = project.onProject({"batch"}, "show Pump\nundo Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(newPumpText));
    EXPECT_THAT(ran.out,
                HasSubstr("Drives/Pump: check out undone, file changed, version 1.1, RW -> RO, reloaded"));
    EXPECT_THAT(ran.out.substr(ran.out.find("undone")), HasSubstr(pumpText));
    EXPECT_THAT(read(pump), HasSubstr(pumpText));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}
TEST_F(Undo, WorksOnAllUnitsBelowAndReloadsThem) {
    lock("Drives");
    lock("Pump");
    change(pump, pumpText, newPumpText);
    const Ran ran = project.onProject({"batch"}, "undo --recursive Drives\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(pumpText));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}
TEST_F(Undo, WhoseRenamingTheToolHasDoneButReportsAsFailedFails) {
    checkOutUnderAnotherName();
    project.replaceProgram(
        "sh", "/bin/sh \"$@\" || exit; case \"$*\" in *' move '*) echo 'sh: no entry' >&2; exit 1;; esac");
    const Ran ran = run({"undo", "Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("sh: no entry"));
    EXPECT_THAT(ran.out, HasSubstr("the file has moved to Lifter.ocl, but: "));
    EXPECT_TRUE(std::filesystem::exists(pump.parent_path() / "Lifter.ocl"));
}
TEST_F(Undo, WhoseRenamingTheToolHasNotDoneFails) {
    checkOutUnderAnotherName();
    project.replaceProgram(
        "sh", "case \"$*\" in *' move '*) echo 'sh: refused' >&2; exit 1;; esac; exec /bin/sh \"$@\"");
    const Ran ran = run({"undo", "Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("the file keeps its name"));
    EXPECT_THAT(ran.out, HasSubstr("sh: refused"));
    EXPECT_TRUE(std::filesystem::exists(pump));
}
TEST_F(Undo, RenamesNothingAfterATimeLimitAndReportsTheRestAsNotBegun) {
    checkOutUnderAnotherName();
    lock("Valve");
    lock("Panel");
    project.lockProject();
    ASSERT_EQ(project.onProject({"property", "set", "CMChildThreadTimeOut", "4000", "--metaclass", "RCS"}).exit,
              0);
    project.replaceProgram("sh", "case \"$*\" in *Valve*) exec sleep 60;; esac; exec /bin/sh \"$@\"");
    const Ran ran = run({"undo", "Pump", "Valve", "Panel"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    const auto items = ran.json()["items"];
    ASSERT_EQ(items.size(), 3U) << ran.out;
    EXPECT_EQ(items[0]["outcome"], "check out undone");
    EXPECT_EQ(items[1]["outcome"], "failed");
    EXPECT_EQ(items[2]["outcome"], "not begun") << ran.out;
    EXPECT_THAT(ran.out, HasSubstr("the file keeps its name"));
    EXPECT_TRUE(std::filesystem::exists(tools::RcsProject::archiveOf(pump))) << "the tool has not renamed it";
}
TEST_F(Undo, TakesFilesByTheirNamesInTheArchive) {
    lock("Pump");
    change(pump, pumpText, newPumpText);
    const Ran ran =
        project.onProject({"batch"}, "undo --archive " + tools::quoted(pump.string()) + "\nshow Pump\n");
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(pumpText));
    EXPECT_THAT(project.locksOf(pump), IsEmpty());
}
TEST_F(Undo, RunsNothingOfAnArchiveName) {
    const fs::path proof = project.directory() / "proof";
    for (const std::string &name :
         {"a\"; touch " + tools::quoted(proof.string()) + "; \"", "$(touch " + proof.string() + ")",
          "`touch " + proof.string() + "`", std::string("a\nb"), "a>" + proof.string()}) {
        for (const auto *const command : {"undo", "checkout", "fetch"}) {
            const Ran ran = run({command, "--archive", name});
            EXPECT_EQ(ran.exit, 2) << command << name << ran.out;
            EXPECT_THAT(errorOf(ran), HasSubstr("can't be given to a tool")) << name;
        }
        EXPECT_FALSE(fs::exists(proof)) << name;
    }
}
