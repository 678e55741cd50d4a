// Tests move, rename and delete that end before any of their steps: the same command, given again, does the rest.
#include "tests/tools/DailyCycle.h"

#include <set>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using tools::Ran;

namespace {

struct Recovery : tools::DailyCycle {
    void SetUp() override {
        DailyCycle::SetUp();
        const Ran ran = run({"checkout", "--lock", "--recursive", "station"});
        ASSERT_EQ(ran.exit, 0) << ran.out << ran.err;
        fs::copy(project.project(), saved, fs::copy_options::recursive);
        project.setEnvironment("LD_PRELOAD", CRASH_POINT);
        project.setEnvironment("ASAN_OPTIONS", "verify_asan_link_order=0");
    }
    void restore() {
        fs::remove_all(project.project());
        fs::copy(saved, project.project(), fs::copy_options::recursive);
    }
    Ran runUpTo(int call, const std::vector<std::string> &words) {
        project.setEnvironment("CRASH_AT", std::to_string(call));
        Ran ran = project.onProject(words);
        project.setEnvironment("CRASH_AT", "-1");
        return ran;
    }
    std::string paths() { return project.onProject({"list", "--paths"}).out; }
    [[nodiscard]] std::string states() { return project.onProject({"list"}).out; }
    /// The files of the units directory and, below RCS, the archives.
    [[nodiscard]] std::set<std::string> files() const {
        std::set<std::string> all;
        for (const auto &entry : fs::recursive_directory_iterator(units)) {
            if (entry.is_regular_file() && !entry.path().filename().string().starts_with('.')) {
                all.insert(fs::relative(entry.path(), units).string());
            }
        }
        return all;
    }
    void sweep(const std::vector<std::string> &words) {
        const Ran good = project.onProject(words);
        ASSERT_EQ(good.exit, 0) << good.out << good.err;
        const std::string wished = paths();
        const auto wishedFiles = files();
        int call = 0;
        for (restore(); runUpTo(call, words).exit == 77; restore(), ++call) {
            SCOPED_TRACE("before call " + std::to_string(call));
            const Ran list = project.onProject({"list"});
            EXPECT_EQ(list.exit, 0) << list.err;
            const bool open = fs::exists(project.projectFile().string() + ".change");
            EXPECT_EQ(list.err.find("is not finished") != std::string::npos, open) << list.err;
            const Ran again = project.onProject(words);
            EXPECT_EQ(again.exit, 0) << again.out << again.err;
            EXPECT_EQ(paths(), wished);
            EXPECT_THAT(states(), Not(HasSubstr("\nU ")));
            EXPECT_EQ(files(), wishedFiles);
            EXPECT_EQ(project.onProject({"recover"}).out, "Nothing is unfinished.\n");
        }
        EXPECT_GT(call, 5);
    }

    fs::path saved = project.directory() / "saved";
    fs::path units = project.project() / "station_ory";
};

} // namespace

TEST_F(Recovery, ARenamingIsContinued) { sweep({"rename", "Pump", "Lifter"}); }
TEST_F(Recovery, AMoveIsContinued) { sweep({"move", "Pump", "Control"}); }
TEST_F(Recovery, ADeletionIsContinued) { sweep({"delete", "Pump"}); }
TEST_F(Recovery, ARenamingOfADirectoryWithoutTheToolIsContinued) {
    sweep({"rename", "--no-tool", "Control", "Logic"});
}
TEST_F(Recovery, AMoveWithoutTheToolIsContinued) { sweep({"move", "--no-tool", "Pump", "Control"}); }
TEST_F(Recovery, ADeletionWithoutTheToolIsContinued) { sweep({"delete", "--no-tool", "Pump"}); }
TEST_F(Recovery, OfACommandWithoutTheToolIsNotReportedAsTheSameCommandWithIt) {
    for (const auto &words :
         {std::vector<std::string>{"rename", "Pump", "Lifter"}, {"move", "Pump", "Control"}, {"delete", "Pump"}}) {
        std::vector<std::string> withoutTool = words;
        withoutTool.insert(withoutTool.begin() + 1, "--no-tool");
        int finished = 0;
        for (int call = 0; runUpTo(call, withoutTool).exit == 77; restore(), ++call) {
            SCOPED_TRACE(words[0] + " before call " + std::to_string(call));
            const Ran again = project.onProject(words);
            const bool isArchived = fs::exists(tools::RcsProject::archiveOf(pump));
            EXPECT_EQ(again.exit, isArchived ? 1 : 0) << again.out << again.err;
            finished += isArchived ? 1 : 0;
        }
        restore();
        EXPECT_GT(finished, 0) << words[0];
    }
}
TEST_F(Recovery, OfADeletionThatTheToolHasHalfDoneDoesNotReportTheRestAsDeleted) {
    const fs::path valve = project.fileOf("Valve");
    int partly = 0;
    for (int call = 0; runUpTo(call, {"delete", "Pump", "Valve"}).exit == 77; restore(), ++call) {
        SCOPED_TRACE("before call " + std::to_string(call));
        const Ran again = run({"delete", "Pump", "Valve"});
        EXPECT_FALSE(fs::exists(pump));
        EXPECT_EQ(again.exit, fs::exists(valve) ? 1 : 0) << again.out << again.err;
        EXPECT_EQ(paths().find("Drives/Valve\n") != std::string::npos, fs::exists(valve));
        if (again.exit != 0) {
            ++partly;
            const auto items = again.json()["items"];
            ASSERT_EQ(items.size(), 2U) << again.out;
            EXPECT_EQ(items[0]["outcome"], "deleted");
            EXPECT_EQ(items[1]["outcome"], "failed");
            EXPECT_THAT(again.out, HasSubstr("Valve.ocl: the CM tool has not removed the file"));
            EXPECT_TRUE(fs::exists(tools::RcsProject::archiveOf(valve)));
            EXPECT_EQ(run({"delete", "Valve"}).exit, 0);
        }
    }
    EXPECT_GT(partly, 0);
}
TEST_F(Recovery, IsShownFinishedAndTakenBackOnRequest) {
    const std::vector<std::string> words{"rename", "--no-tool", "Pump", "Lifter"};
    int shown = 0;
    for (int call = 0; runUpTo(call, words).exit == 77; restore(), ++call) {
        const auto before = project.onProject({"--json", "recover"}).json()["unfinished"];
        if (before.is_null()) {
            continue;
        }
        ++shown;
        EXPECT_EQ(before["command"], "rename --no-tool Pump Lifter");
        const Ran undone = project.onProject({"--json", "recover", "--undo"});
        EXPECT_EQ(undone.exit, 0) << undone.out;
        EXPECT_EQ(undone.json()["recovered"]["outcome"], "undone");
        EXPECT_THAT(paths(), HasSubstr("Drives/Pump\n"));
        restore();
        runUpTo(call, words);
        const Ran finished = project.cm({"recover", "--finish", project.projectFile().string()});
        EXPECT_EQ(finished.out, "Finished: rename --no-tool Pump Lifter\n") << finished.err;
        EXPECT_THAT(paths(), HasSubstr("Drives/Lifter\n"));
    }
    EXPECT_GT(shown, 3);
}
TEST_F(Recovery, AFirstCommandThatFailsBesideASecondThatWorksLosesNoUnit) {
    fs::remove(tools::RcsProject::archiveOf(units / "Control" / "Control.osb"));
    const Ran ran = run({"rename", "Control", "Logic"});
    EXPECT_EQ(ran.exit, 1) << "the file is not in the archive";
    EXPECT_THAT(paths(), HasSubstr("Logic/AlarmList\n"));
    EXPECT_THAT(states(), Not(HasSubstr("\nU ")));
    EXPECT_TRUE(fs::exists(units / "Logic" / "Logic.osb"));
    EXPECT_TRUE(fs::exists(tools::RcsProject::archiveOf(units / "Logic" / "AlarmList.ocl")));
}
TEST_F(Recovery, AFirstCommandThatWorksBesideASecondThatFailsIsTakenBackInTheArchiveToo) {
    // The directory can't be moved, since there is a file in its place that the program can't see in time.
    project.replaceProgram("rmdir", "exit 1");
    project.replaceProgram("mv",
                           "for last; do :; done; case $last in */Logic) echo 'mv: refused' >&2; exit 1;; esac; "
                           "exec /bin/mv \"$@\"");
    const auto before = files();
    const Ran ran = run({"rename", "Control", "Logic"});
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(reason(ran), HasSubstr("the model and its files are unchanged"));
    EXPECT_THAT(paths(), HasSubstr("Control/AlarmList\n"));
    EXPECT_EQ(files(), before);
}
