#include "CM/CMSupport/command/CMDeleteMember.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class DeleteMember : public CheckOutFixture {
  protected:
    DeleteMember() { setToolProperty(IPN::Delete, "rm $Unit"); }
    int remove(CMUnitList units, bool hybrid = false) { return CMDeleteMember()(units, args, diags, hybrid); }
    recording::Subsystem &subsystemWithDirectory() {
        auto &tanks = host.addSubsystem("Tanks");
        tanks.persistAs = "T";
        return tanks;
    }
};

TEST_F(DeleteMember, RunsOneCommandAUnit) {
    EXPECT_EQ(remove(list(&host.addUnit("Pump"), nullptr, &host.addUnit("Valve"))), 1);
    const std::string log = "log 4 ../CM/CMSupport/DeleteMember: ";
    const std::string before = log + "Executing the following command to delete the file: rm ";
    const std::string after = log + "Delete file command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "Pump.ocl", "run rm Pump.ocl", after, before + "Valve.ocl",
                                     "run rm Valve.ocl", after));
    expectNothingIsLeft();
}

TEST_F(DeleteMember, ASubsystemWithADirectoryGoesWithItsDirectory) {
    setToolProperty("DeleteDirectory", "rmdir $UnitDirPath");
    auto &tanks = subsystemWithDirectory();
    tanks.directory = "/m/T";
    EXPECT_EQ(remove(list(&tanks)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("rmdir /m/T")) << "the value is the unit's";
}

TEST_F(DeleteMember, ASubsystemWithoutADirectoryGoesLikeAnyUnit) {
    setToolProperty("DeleteDirectory", "rmdir $UnitDirPath");
    remove(list(&host.addSubsystem("Tanks")));
    EXPECT_THAT(host.worker.commands, ElementsAre("rm Tanks.osb"));
}

TEST_F(DeleteMember, OnlyASubsystemGoesWithADirectory) {
    setToolProperty("DeleteDirectory", "rmdir $UnitDirPath");
    auto &pump = host.addUnit("Pump");
    pump.persistAs = "P";
    remove(list(&pump));
    EXPECT_THAT(host.worker.commands, ElementsAre("rm Pump.ocl"));
}

TEST_F(DeleteMember, WithoutATemplateForDirectoriesASubsystemGoesLikeAnyUnit) {
    auto &tanks = subsystemWithDirectory();
    remove(list(&tanks));
    setToolProperty("DeleteDirectory", "");
    remove(list(&tanks));
    EXPECT_THAT(host.worker.commands, ElementsAre("rm Tanks.osb", "rm Tanks.osb"));
}

TEST_F(DeleteMember, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty(IPN::Delete, "rm $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(remove(units), 1);
    EXPECT_EQ(remove(units), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("rm x Valve.ocl", "rm x Pump.ocl"));
    args.RemoveAll();
}

TEST_F(DeleteMember, AnEmptyListGivesNothing) {
    EXPECT_EQ(remove(list()), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(DeleteMember, ARunThatFailsGivesZero) {
    breakExecute();
    EXPECT_EQ(remove(list(&host.addUnit("Pump"))), 0);
}

TEST_F(DeleteMember, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(remove(list(&host.addUnit("Pump"))), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(DeleteMember, InHybridModeOnlyTheTemplateForDirectoriesIsThatOfTheProvidersName) {
    useProvider();
    host.setTool("None");
    for (const char *tool : {"Basalt", "SCC"}) {
        host.setToolDefault(tool, IPN::Delete, CString(tool) + " rm");
        host.setToolDefault(tool, "DeleteDirectory", CString(tool) + " rmdir");
    }
    EXPECT_EQ(remove(list(&host.addUnit("Pump"), &subsystemWithDirectory()), true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("SCC rm", "Basalt rmdir"));
    EXPECT_EQ(remove(list(&host.addUnit("Valve")), false), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(DeleteMember, InHybridModeTheProvidersTemplateDecidesWhetherADirectoryGoesAsOne) {
    useProvider();
    host.setToolDefault("SCC", IPN::Delete, "rm");
    host.setToolDefault("SCC", "DeleteDirectory", "rmdir");
    EXPECT_EQ(remove(list(&subsystemWithDirectory()), true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("rm"));
}

class DeleteDirectory : public CheckOutFixture {
  protected:
    DeleteDirectory() { setToolProperty("DeleteDirectory", "rmdir $UnitDirPath"); }
    int remove(const CString &directory = "/m/T", bool hybrid = false) {
        return CMDeleteMember().deleteDirectory(directory, args, diags, hybrid);
    }
};

TEST_F(DeleteDirectory, RunsTheCommandForTheDirectoryGiven) {
    EXPECT_EQ(remove(), 1);
    const std::string log = "log 4 ../CM/CMSupport/DeleteMember: ";
    EXPECT_THAT(calls(), ElementsAre(log + "Executing the following command to delete the directory: rmdir /m/T",
                                     "run rmdir /m/T", log + "Delete directory command returned the following: "));
    expectNothingIsLeft();
}

TEST_F(DeleteDirectory, ReplacesTheRootAndTheDirectoryAndExpandsNothingElse) {
    setToolProperty("DeleteDirectory", "$OQROOT/rm $UnitDirPath $archive $unitdirpath $UnitDirPath (a ? b : c)");
    host.places.root = "/opt/orchard";
    EXPECT_EQ(remove(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("/opt/orchard/rm /m/T $archive $unitdirpath /m/T (a ? b : c)"));
}

TEST_F(DeleteDirectory, ExpandsNoPropertyThatItsTemplateNames) {
    setToolProperty("Piece", "the property");
    setToolProperty("DeleteDirectory", "rmdir $Piece $UnitDirPath");
    EXPECT_EQ(remove(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("rmdir $Piece /m/T"));
}

TEST_F(DeleteDirectory, WithoutATemplateGivesZeroWithoutADiagnostic) {
    setToolProperty("DeleteDirectory", "");
    EXPECT_EQ(remove(), 0);
    host.setTool("Other");
    EXPECT_EQ(remove(), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(DeleteDirectory, WithoutARootGivesZeroThoughTheTemplateDoesNotNameIt) {
    host.places.root.Empty();
    EXPECT_EQ(remove(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    expectNothingIsLeft();
}

TEST_F(DeleteDirectory, GivesWhatTheRunGave) {
    breakExecute();
    EXPECT_EQ(remove(), 0);
    EXPECT_THAT(logTexts(), SizeIs(2));
}

TEST_F(DeleteDirectory, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(remove(), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(DeleteDirectory, InHybridModeTakesTheTemplateOfTheProvidersName) {
    useProvider();
    host.setTool("None");
    host.setToolDefault("Basalt", "DeleteDirectory", "hybrid rmdir $UnitDirPath");
    EXPECT_EQ(remove("/m/T", true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("hybrid rmdir /m/T"));
    EXPECT_EQ(remove("/m/T", false), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

} // namespace
