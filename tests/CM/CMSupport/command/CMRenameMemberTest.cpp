#include "CM/CMSupport/command/CMRenameMember.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class RenameMember : public CheckOutFixture {
  protected:
    RenameMember() {
        setToolProperty("Rename", "rn $oldName $newName");
        pump.fileName = "New.ocl"; // the model has the new name already
    }
    int rename(const CString &from, const CString &to, bool hybrid = false) {
        return CMRenameMember()(&pump, from, to, diags, hybrid);
    }
    /// What the two commands become for a move from /m/a/Old.ocl to /m/b/New.ocl.
    const std::vector<CString> &acrossDirectories(const CString &file, const CString &directory) {
        setToolProperty("Rename", file);
        setToolProperty("RenameDirectory", directory);
        host.clearRecords();
        EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl"), 1);
        return host.worker.commands;
    }

    recording::Class &pump = host.addUnit("Pump");
};

TEST_F(RenameMember, WithinOneDirectoryRunsOneCommandWithoutLogLines) {
    setToolProperty("RenameDirectory", "rndir $oldName $newName");
    EXPECT_EQ(rename("/m/Old.ocl", "/m/New.ocl"), 1);
    EXPECT_THAT(calls(), ElementsAre("run rn /m/Old.ocl /m/New.ocl"));
    EXPECT_EQ(lookUpOf("RenameDirectory"), -1);
    expectNothingIsLeft();
}

TEST_F(RenameMember, TheListFormDoesNothing) {
    auto units = list(&pump);
    EXPECT_EQ(CMRenameMember()(units, args, diags, false), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_THAT(host.lookups, IsEmpty());
}

TEST_F(RenameMember, WithoutAUnitGivesZeroAndAsksForNoTool) {
    host.setTool("None");
    EXPECT_EQ(CMRenameMember()(nullptr, "/m/a", "/m/a", diags, false), 0);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(RenameMember, WithEqualPathsGivesOneAndAsksForNoTool) {
    host.setTool("None");
    EXPECT_EQ(rename("/m/Pump.ocl", "/m/Pump.ocl"), 1);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(RenameMember, PathsThatDifferInCaseAreDifferent) {
    EXPECT_EQ(rename("/m/new.ocl", "/m/New.ocl"), 1);
    EXPECT_THAT(host.worker.commands, SizeIs(1));
}

TEST_F(RenameMember, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(rename("/m/Old.ocl", "/m/New.ocl"), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(RenameMember, WithoutATemplateGivesZeroAndRunsNothing) {
    setToolProperty("Rename", "");
    setToolProperty("RenameDirectory", "rndir");
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl"), 0);
    host.setTool("Other");
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl"), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(RenameMember, FillsInTheDirectoriesOfTheTwoPaths) {
    setToolProperty("Rename", "$dir|$olddir|$newdir|$oldName|$newName|$dir");
    rename("/m/a/Old.ocl", "/m/b/New.ocl");
    EXPECT_THAT(host.worker.commands, ElementsAre("/m/a|/m/a|/m/b|/m/a/Old.ocl|/m/b/New.ocl|/m/a"));
}

TEST_F(RenameMember, ExpandsWhatIsLeftWithTheUnitAndTheArchive) {
    setToolProperty("Rename", "rn $archive $Unit");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    rename("/m/Old.ocl", "/m/New.ocl");
    EXPECT_THAT(host.worker.commands, ElementsAre("rn /archives/plant New.ocl"));
}

TEST_F(RenameMember, AcrossDirectoriesWithoutATemplateForThemRunsOneCommandWithTheRealNewPath) {
    EXPECT_THAT(acrossDirectories("rn $oldName $newName", ""), ElementsAre("rn /m/a/Old.ocl /m/b/New.ocl"));
    EXPECT_THAT(host.logLines, IsEmpty());
}

TEST_F(RenameMember, AcrossDirectoriesTheFileIsRenamedInItsOldDirectoryAndTheDirectoryFollows) {
    EXPECT_THAT(acrossDirectories("rn $oldName $newName", "rndir $oldName $newName"),
                ElementsAre("rn /m/a/Old.ocl /m/a/New.ocl", "rndir /m/a /m/b"));
    const std::string log = "log 4 ../CM/CMSupport/RenameMember: ";
    EXPECT_THAT(calls(), ElementsAre("run rn /m/a/Old.ocl /m/a/New.ocl",
                                     log + "Executing the following command to rename the file: rndir /m/a /m/b",
                                     "run rndir /m/a /m/b", log + "Rename file command returned the following: "));
}

TEST_F(RenameMember, TheNewDirectoryOfTheFirstCommandIsThenTheOldOne) {
    EXPECT_THAT(acrossDirectories("rn $newdir", "rndir"), ElementsAre("rn /m/a", "rndir"));
}

TEST_F(RenameMember, TheFirstCommandTakesTheUnitsFileNameAndNotThatOfTheNewPath) {
    pump.fileName = "Other.ocl";
    EXPECT_THAT(acrossDirectories("rn $newName", "rndir"), ElementsAre("rn /m/a/Other.ocl", "rndir"));
}

TEST_F(RenameMember, TheOuterOldDirectoryGoesInForTwoNamesIfTheTemplateForFilesAsksForEither) {
    for (const char *file : {"rn $olddir", "rn $dir"}) {
        EXPECT_THAT(acrossDirectories(file, "rndir $dir $oldDir"), ElementsAre("rn /m/a", "rndir /m /m"));
    }
}

TEST_F(RenameMember, TheOuterOldDirectoryIsNotAskedForByTheTemplateForDirectoriesItself) {
    EXPECT_THAT(acrossDirectories("rn $oldName", "rndir $dir"), ElementsAre("rn /m/a/Old.ocl"))
        << "$dir stays, and nothing knows such a variable";
}

TEST_F(RenameMember, TheSmallSpellingIsNotReplacedInTheTemplateForDirectories) {
    EXPECT_THAT(acrossDirectories("rn $olddir", "rndir $olddir"), ElementsAre("rn /m/a"));
}

TEST_F(RenameMember, TheOuterNewDirectoryGoesInIfTheTemplateForFilesAsksForIt) {
    EXPECT_THAT(acrossDirectories("rn $newdir", "rndir $newdir"), ElementsAre("rn /m/a", "rndir /m"));
    EXPECT_THAT(acrossDirectories("rn $oldName", "rndir $newdir"), ElementsAre("rn /m/a/Old.ocl"));
}

TEST_F(RenameMember, ADirectoryThatStandsInNoneIsItsOwnOuterOne) {
    setToolProperty("Rename", "rn $dir $newdir");
    setToolProperty("RenameDirectory", "rndir $dir $newdir");
    rename("a/Old.ocl", "b/New.ocl");
    EXPECT_THAT(host.worker.commands, ElementsAre("rn a a", "rndir a b"));
}

TEST_F(RenameMember, TheOuterDirectoryIsCutAtTheHostsSeparatorOnly) {
    host.places.separator = '\\';
    setToolProperty("Rename", "rn $dir");
    setToolProperty("RenameDirectory", "rndir $dir");
    rename("/m/a/Old.ocl", "/m/b/New.ocl");
    EXPECT_THAT(host.worker.commands, ElementsAre("rn /m/a", "rndir /m/a"));
}

TEST_F(RenameMember, AFirstCommandThatCannotBeMadeLeavesTheDirectoryOut) {
    EXPECT_THAT(acrossDirectories("rn $unknown", "rndir"), IsEmpty());
}

TEST_F(RenameMember, AFirstRunThatFailsLeavesTheDirectoryOut) {
    setToolProperty("RenameDirectory", "rndir");
    breakExecute();
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl"), 1);
    EXPECT_THAT(host.logLines, IsEmpty()) << "the lines belong to the second run";
}

TEST_F(RenameMember, ASecondCommandThatCannotBeMadeChangesNoResult) {
    EXPECT_THAT(acrossDirectories("rn", "rndir $unknown"), ElementsAre("rn"));
    EXPECT_THAT(host.logLines, IsEmpty());
}

TEST_F(RenameMember, ASecondRunThatFailsChangesNoResult) {
    setToolProperty("RenameDirectory", "rndir");
    host.worker.run = [this](const CString &) {
        breakExecute();
        return recording::ToolRun{};
    };
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl"), 1);
    EXPECT_THAT(logTexts(), SizeIs(2));
    EXPECT_THAT(host.worker.commands, SizeIs(1));
}

TEST_F(RenameMember, TheSecondRunStartsWithoutOutputAndErrorsOfTheFirst) {
    setToolProperty("RenameDirectory", "rndir");
    host.worker.run = [](const CString &command) {
        return command.Find("rndir") == 0 ? recording::ToolRun{{}, {"second\n"}, 0}
                                          : recording::ToolRun{{}, {"first\n"}, 0};
    };
    rename("/m/a/Old.ocl", "/m/b/New.ocl");
    EXPECT_THAT(shown.str(), testing::EndsWith("rndir\nsecond\nsecond\n"));
}

TEST_F(RenameMember, InHybridModeTakesTheTemplatesOfTheProvidersName) {
    useProvider();
    host.setTool("None");
    for (const char *tool : {"Basalt", "SCC"}) {
        host.setToolDefault(tool, "Rename", CString(tool) + " rn $detail");
        host.setToolDefault(tool, "RenameDirectory", CString(tool) + " rndir $detail");
        host.setToolDefault(tool, "detail", CString("of ") + tool);
    }
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl", true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt rn of SCC", "Basalt rndir of SCC"))
        << "what is left in the templates is expanded without the flag";
    EXPECT_EQ(rename("/m/a/Old.ocl", "/m/b/New.ocl", false), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

} // namespace
