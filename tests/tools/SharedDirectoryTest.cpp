// Tests a subsystem that shares its directory with another: deleting, renaming or moving one leaves the files of
// the other alone, with any tool.
#include "tests/tools/scenario/ScenarioProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace fs = std::filesystem;
using scenario::Project;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tools::Ran;

namespace {

/// Control and Operator with its part Panel share one directory; all units are checked out, and Panel and
/// Operator hold work that is not checked in. Drives has its own directory.
struct SharedDirectory : testing::TestWithParam<const char *> {
    SharedDirectory() : project(GetParam(), {}) {}
    void SetUp() override {
        for (const char *const file : {"Operator.osb", "Panel.ocl"}) {
            fs::rename(project.file(std::string("Operator/") + file),
                       project.file(std::string("Control/") + file));
        }
        fs::remove(project.file("Operator"));
        project.edit("station.ory", "directory=\"Operator\"", "directory=\"Control\"");
        fs::create_directory(project.file("Motion"));
        for (const char *const file :
             {"Drives.osb", "Pump.ocl", "Valve.ocl", "Sensors.osb", "LevelSensor.ocl", "FlowSensor.ocl"}) {
            fs::rename(project.file(file), project.file(std::string("Motion/") + file));
        }
        project.edit("station.ory", "file=\"Drives.osb\"", "directory=\"Motion\" file=\"Drives.osb\"");
        good({"connect"},
             archive.archive().empty() ? std::vector<std::string>{} : std::vector<std::string>{archive.archive()});
        good({"add", "--log", "first", "--recursive"}, {"station"});
        good({"checkout", "--lock", "--recursive"}, {"station"});
        for (const std::string &file : others) {
            project.edit(file, "<description>", "<description>Not checked in. ");
        }
        ASSERT_FALSE(HasFailure());
    }

    Ran good(const std::vector<std::string> &words, const std::vector<std::string> &items = {}) {
        Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 0) << words.front() << '\n' << ran.out << ran.err;
        return ran;
    }
    /// Body of the file, without the header that tools write.
    std::string body(const std::string &file) {
        const std::string text = project.text(file);
        return text.substr(std::min(text.find("<name>"), text.size()));
    }
    std::map<std::string, std::string> bodies() {
        std::map<std::string, std::string> texts;
        for (const std::string &file : others) {
            texts[file] = body(file);
        }
        return texts;
    }
    /// The files of Control, wherever it is.
    std::set<std::string> at(const std::string &directory, const std::string &control = "Control.osb") const {
        std::set<std::string> files;
        for (const std::string &file : {control, std::string("PumpController.ocl"),
                                        std::string("LevelRegulator.ocl"), std::string("AlarmList.ocl")}) {
            files.insert(directory + "/" + file);
        }
        return files;
    }
    void expectOnDiskAndInArchive(const std::set<std::string> &files) {
        const auto archived = archive.files();
        const auto here = project.files();
        for (const std::string &file : files) {
            EXPECT_TRUE(archived.contains(file)) << file;
            EXPECT_TRUE(here.contains(file)) << file;
        }
        EXPECT_EQ(archived, here);
        const Ran list = project.run({"--json", "list"});
        EXPECT_EQ(list.exit, 0) << list.err;
        EXPECT_THAT(list.err, IsEmpty());
    }

    Project project;
    scenario::Adapter &archive = project.archive();
    const std::set<std::string> others{"Control/Operator.osb", "Control/Panel.ocl"};
};

TEST_P(SharedDirectory, ADeleteLeavesTheOthersFiles) {
    const auto before = bodies();
    const auto archived = archive.files();
    const Ran ran = project.run({"delete", "--recursive"}, {"Control"});
    EXPECT_EQ(bodies(), before);
    const std::string tool = GetParam();
    if (tool == "RCS" || tool == "CVS") { // which delete file by file
        EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
        expectOnDiskAndInArchive(others);
        EXPECT_EQ(archive.files().size(), archived.size() - at("Control").size());
        return;
    }
    EXPECT_EQ(ran.exit, 1) << ran.out;
    EXPECT_THAT(ran.err, HasSubstr("Control also contains files of '"));
    EXPECT_EQ(archive.files(), archived);
    expectOnDiskAndInArchive(at("Control"));
}

TEST_P(SharedDirectory, ADeleteWithoutTheToolRemovesTheUnitsOwnFilesOnly) {
    const auto before = bodies();
    good({"delete", "--no-tool", "--recursive"}, {"Control"});
    EXPECT_EQ(bodies(), before);
    for (const std::string &file : at("Control")) {
        EXPECT_FALSE(fs::exists(project.file(file))) << file;
    }
}

TEST_P(SharedDirectory, ARenameLeavesTheDirectoryItsName) {
    const auto before = bodies();
    good({"rename"}, {"Control", "Logic"});
    EXPECT_EQ(bodies(), before);
    expectOnDiskAndInArchive(at("Control", "Logic.osb"));
    EXPECT_FALSE(fs::exists(project.file("Control/Control.osb")));
    EXPECT_FALSE(fs::exists(project.file("Logic")));
    EXPECT_EQ(project.show("Logic")["name"], "Logic");
}

TEST_P(SharedDirectory, AMoveTakesTheUnitsOwnFilesOnly) {
    const auto before = bodies();
    good({"move"}, {"Control", "Drives"});
    EXPECT_EQ(bodies(), before);
    expectOnDiskAndInArchive(at("Motion/Control"));
    EXPECT_FALSE(fs::exists(project.file("Control/Control.osb")));
    EXPECT_THAT(good({"list", "--paths"}).out, HasSubstr("Drives/Control/AlarmList\n"));
}

TEST_P(SharedDirectory, AMoveOfASubsystemWithoutPartsLeavesTheOthersFiles) {
    good({"move"}, {"Panel", "Drives"});
    const std::string before = body("Control/AlarmList.ocl");
    good({"move"}, {"Operator", "Drives"});
    EXPECT_EQ(body("Control/AlarmList.ocl"), before);
    expectOnDiskAndInArchive(at("Control"));
    expectOnDiskAndInArchive({"Motion/Control/Operator.osb", "Motion/Panel.ocl"});
    EXPECT_THAT(body("Motion/Control/Operator.osb"), HasSubstr("Not checked in. "));
}

TEST_P(SharedDirectory, WhatLiesBelowGoesIntoItWithItsOwnDirectory) {
    good({"move"}, {"Control", "Sensors"});
    expectOnDiskAndInArchive(at("Motion/Control"));
    const auto before = bodies();
    good({"move"}, {"Sensors", "Operator"});
    EXPECT_EQ(bodies()["Control/Panel.ocl"], before.at("Control/Panel.ocl"));
    expectOnDiskAndInArchive(at("Control/Control"));
    expectOnDiskAndInArchive({"Control/Sensors.osb", "Control/FlowSensor.ocl", "Control/Panel.ocl"});
}

// One tool that does not handle directories, and two that move and delete them with their contents.
INSTANTIATE_TEST_SUITE_P(Tools, SharedDirectory, testing::Values("RCS", "Subversion", "Git"),
                         [](const auto &row) { return std::string(row.param); });

// What the scripts do with a directory that exists already.
struct MoveScript : testing::TestWithParam<const char *> {
    MoveScript() : project(GetParam(), {}) {}
    Ran move() {
        const std::string tool = GetParam();
        const std::string script = tool == "Git" ? "git.sh" : "mercurial.sh";
        return project.shell("cd " + tools::quoted(project.units().string()) + " && sh " +
                             tools::quoted(std::string(SCRIPT_DIRECTORY) + "/" + script) + " move " +
                             tools::quoted(project.archive().archive()) + " " +
                             tools::quoted(project.file("Control").string()) + " " +
                             tools::quoted(project.file("Logic").string()));
    }
    void SetUp() override {
        const std::string main = project.archive().archive();
        ASSERT_EQ(project.run({"connect"}, main.empty() ? std::vector<std::string>{} : std::vector{main}).exit, 0);
        ASSERT_EQ(project.run({"add", "--log", "first", "--recursive"}, {"station"}).exit, 0);
        fs::create_directory(project.file("Logic"));
    }
    Project project;
};

TEST_P(MoveScript, TakesTheDirectoryToThePlaceOfAnEmptyOne) {
    const Ran ran = move();
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_TRUE(project.archive().files().contains("Logic/AlarmList.ocl"));
    EXPECT_TRUE(fs::exists(project.file("Logic/AlarmList.ocl")));
    EXPECT_FALSE(fs::exists(project.file("Control")));
}

TEST_P(MoveScript, NeverPutsTheDirectoryIntoAFullOne) {
    tools::Workplace::write(project.file("Logic/mine.txt"), "mine");
    const auto before = project.archive().files();
    const Ran ran = move();
    EXPECT_NE(ran.exit, 0);
    EXPECT_THAT(ran.err, StartsWith("rmdir: "));
    EXPECT_EQ(project.archive().files(), before);
    EXPECT_TRUE(fs::exists(project.file("Control/AlarmList.ocl")));
    EXPECT_EQ(project.text("Logic/mine.txt"), "mine");
}

INSTANTIATE_TEST_SUITE_P(Tools, MoveScript, testing::Values("Git", "Mercurial"),
                         [](const auto &row) { return std::string(row.param); });

} // namespace
