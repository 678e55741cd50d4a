// Tests that work the archive doesn't have is not overwritten, and that an older copy can't replace newer
// versions.
#include "tests/tools/scenario/ScenarioProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace fs = std::filesystem;
using scenario::Project;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tools::quoted;
using tools::Ran;

namespace {

struct Unarchived : testing::TestWithParam<const char *> {
    Unarchived() : project(GetParam(), {}) {}
    void SetUp() override {
        good({"connect"}, whereTo());
        good({"add", "--log", "first"}, {"station", "Drives", "Pump"});
        ASSERT_FALSE(HasFailure());
    }
    std::vector<std::string> whereTo() {
        return archive.archive().empty() ? std::vector<std::string>{}
                                         : std::vector<std::string>{archive.archive()};
    }
    Ran good(const std::vector<std::string> &words, const std::vector<std::string> &items = {}) {
        Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 0) << words.front() << '\n' << ran.out << ran.err;
        return ran;
    }
    /// Changes a file that stays read-only, as an editor does that replaces it.
    void changeReadOnly(const std::string &file) {
        fs::permissions(project.file(file), fs::perms::owner_write, fs::perm_options::add);
        project.edit(file, "<description>", "<description>Nowhere else. ");
        fs::permissions(project.file(file), fs::perms::owner_write, fs::perm_options::remove);
    }
    /// Returns the texts of the files whose names begin like this, apart from the file itself.
    std::vector<std::string> copiesOf(const std::string &name) {
        std::vector<std::string> texts;
        for (const auto &entry : fs::directory_iterator(project.units())) {
            const std::string found = entry.path().filename().string();
            if (found != name && found.find(name) != std::string::npos) {
                texts.push_back(tools::Workplace::read(entry.path()));
            }
        }
        return texts;
    }

    Project project;
    scenario::Adapter &archive = project.archive();
};

TEST_P(Unarchived, ChangesOfAReadOnlyFileAreKeptByACheckOut) {
    changeReadOnly("Pump.ocl");
    const std::string mine = project.text("Pump.ocl");
    const Ran ran = project.run({"checkout", "--lock"}, {"Pump"});
    EXPECT_THAT(project.text("Pump.ocl"), Not(HasSubstr("Nowhere else"))) << ran.out << ran.err;
    EXPECT_THAT(copiesOf("Pump.ocl"), testing::ElementsAre(mine));
}

TEST_P(Unarchived, AnOlderVersionIsOverwrittenWithoutACopy) {
    archive.changeAsBob("Pump.ocl", "<description>", "<description>Of Bob. ");
    good({"checkout"}, {"Pump"});
    EXPECT_THAT(project.text("Pump.ocl"), HasSubstr("Of Bob"));
    EXPECT_THAT(copiesOf("Pump.ocl"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Tools, Unarchived, testing::Values("RCS", "CVS", "Subversion", "Git", "Mercurial"),
                         [](const auto &row) { return std::string(row.param); });

/// Connects a writable copy of the model that is older than the archive.
struct OlderCopy : Unarchived {
    void SetUp() override {
        Unarchived::SetUp();
        const fs::path home = project.units().parent_path();
        good({"checkout", "--lock"}, {"Pump"});
        project.shell("cp -r " + quoted(home.string()) + " copy && rm -rf copy/.git copy/.hg copy/*/.svn");
        project.edit("Pump.ocl", "<description>", "<description>Newer. ");
        good({"checkin", "--log", "newer"}, {"Pump"});
        fs::remove_all(home);
        fs::rename(project.directory() / "copy", home);
        connected = good({"connect"}, whereTo());
    }
    Ran connected;
};

TEST_P(OlderCopy, IsReportedByTheConnect) {
    EXPECT_THAT(connected.out + connected.err, HasSubstr("differ from the archive"));
    EXPECT_THAT(connected.out + connected.err, HasSubstr("warning: - Pump.ocl"));
    EXPECT_THAT(connected.out + connected.err, Not(HasSubstr("- Drives.osb"))) << "which is the same";
}

TEST_P(OlderCopy, IsNotCheckedInOverTheNewerVersion) {
    const int versions = archive.versions("Pump.ocl");
    const Ran ran = project.run({"checkin", "--log", "older"}, {"Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_EQ(archive.versions("Pump.ocl"), versions);
    EXPECT_THAT(archive.newest("Pump.ocl"), HasSubstr("Newer. "));
    EXPECT_NE(project.run({"lock"}, {"Pump"}).exit, 0) << "which would make it ready for a check in";
    good({"checkout", "--lock"}, {"Pump"});
    EXPECT_THAT(project.text("Pump.ocl"), HasSubstr("Newer. "));
}

INSTANTIATE_TEST_SUITE_P(Tools, OlderCopy, testing::Values("Subversion", "Git", "Mercurial"),
                         [](const auto &row) { return std::string(row.param); });

/// A name that a tool can't hold, and the file or directory that is given it.
struct Name {
    const char *tool;
    const char *label;
    const char *name;
};

struct Unholdable : testing::TestWithParam<Name> {};

TEST_P(Unholdable, DirectoryNameIsRefusedBeforeAnythingIsDone) {
    Project project(GetParam().tool, {});
    scenario::Adapter &archive = project.archive();
    const std::string where = archive.archive();
    ASSERT_EQ(project.run({"connect"}, where.empty() ? std::vector<std::string>{} : std::vector{where}).exit, 0);
    ASSERT_EQ(project.run({"add", "--log", "first"}, {"station", "Control", "PumpController"}).exit, 0);
    const auto archived = archive.files();
    const auto files = project.files();
    const std::string script = std::string(GetParam().tool) == "RCS"          ? "rcs.sh"
                               : std::string(GetParam().tool) == "CVS"        ? "cvs.sh"
                               : std::string(GetParam().tool) == "Subversion" ? "subversion.sh"
                               : std::string(GetParam().tool) == "Git"        ? "git.sh"
                                                                              : "mercurial.sh";
    const bool namesTheArchive = script != "cvs.sh" && script != "subversion.sh";
    const Ran ran =
        project.shell("cd " + quoted(project.units().string()) + " && sh " +
                      quoted(std::string(SCRIPT_DIRECTORY) + "/" + script) + " move " +
                      (namesTheArchive ? quoted(where) + " " : "") + quoted(project.file("Control").string()) +
                      " " + quoted(project.file(std::string("Operator/") + GetParam().name).string()));
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_THAT(ran.err, testing::StartsWith("error: "));
    EXPECT_EQ(archive.files(), archived);
    EXPECT_EQ(project.files(), files);
    EXPECT_FALSE(fs::exists(project.file(std::string("Operator/") + GetParam().name)) &&
                 !fs::is_directory(project.file("Control")));
}

INSTANTIATE_TEST_SUITE_P(Tools, Unholdable,
                         testing::Values(Name{"RCS", "RcsArchives", "RCS"}, Name{"RCS", "RcsAttic", "Attic"},
                                         Name{"CVS", "CvsSemicolon", "a;b"}, Name{"CVS", "CvsComma", "a,b"},
                                         Name{"CVS", "CvsPlus", "a+b"}, Name{"CVS", "CvsEqual", "a=b"},
                                         Name{"CVS", "CvsGreater", "a>b"}, Name{"CVS", "CvsArchive", "x,v"},
                                         Name{"CVS", "CvsAttic", "Attic"}, Name{"Subversion", "SvnOwn", ".svn"},
                                         Name{"Git", "GitOwn", ".git"}, Name{"Git", "GitOwnInCapitals", ".Git"},
                                         Name{"Mercurial", "HgOwn", ".hg"}),
                         [](const auto &row) { return std::string(row.param.label); });

TEST(RcsProjectBelowADirectoryRcs, Works) {
    scenario::Names names;
    Project project("RCS", names);
    const fs::path below = project.directory() / "RCS";
    fs::create_directory(below);
    fs::rename(project.units().parent_path(), below / "home");
    const auto run = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"-p", (below / "home/station.orp").string()});
        const Ran ran = project.cm(words);
        EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    };
    run({"connect"});
    run({"add", "--log", "first", "Pump"});
    run({"checkout", "--lock", "Pump"});
    run({"checkin", "--log", "second", "Pump"});
    EXPECT_TRUE(fs::exists(below / "home/station_ory/RCS/Pump.ocl,v"));
}

TEST(RcsCheckIn, OfAFileWithoutAnArchiveIsAnError) {
    Project project("RCS", {});
    ASSERT_EQ(project.run({"connect"}).exit, 0);
    ASSERT_EQ(project.run({"add", "--log", "first"}, {"station", "Drives", "Pump"}).exit, 0);
    ASSERT_EQ(project.run({"checkout", "--lock"}, {"Pump"}).exit, 0);
    const fs::path archived = project.file("RCS/Pump.ocl,v");
    fs::rename(archived, project.directory() / "out of reach");
    const Ran ran = project.run({"checkin", "--log", "second"}, {"Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_FALSE(fs::exists(archived)) << "a second history";
    EXPECT_TRUE(project.isWritable("Pump.ocl"));
}

TEST(MercurialCheckIn, ThatIsRefusedLeavesTheFileWritableAndAsItWas) {
    Project project("Mercurial", {});
    ASSERT_EQ(project.run({"connect"}, {project.archive().archive()}).exit, 0);
    ASSERT_EQ(project.run({"add", "--log", "first"}, {"Pump"}).exit, 0);
    ASSERT_EQ(project.run({"checkout", "--lock"}, {"Pump"}).exit, 0);
    project.edit("Pump.ocl", "<description>", "<description>Changed. ");
    const std::string before = project.text("Pump.ocl");
    const fs::path settings = project.units().parent_path() / ".hg/hgrc";
    tools::Workplace::write(settings, tools::Workplace::read(settings) + "\n[hooks]\npretxncommit.no = false\n");
    const Ran ran = project.run({"checkin", "--log", "second"}, {"Pump"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("exit status 255")) << "that of Mercurial";
    EXPECT_TRUE(project.isWritable("Pump.ocl"));
    EXPECT_EQ(project.text("Pump.ocl"), before);
}

} // namespace
