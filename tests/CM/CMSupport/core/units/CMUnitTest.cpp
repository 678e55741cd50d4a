#include "CM/CMSupport/core/CMUnit.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

using testing::HasSubstr;

namespace {

class Unit : public CoreFixture {
  protected:
    recording::Class &pumpIn(const CString &directory) {
        auto &pump = host.addUnit("Pump");
        pump.directory = directory;
        return pump;
    }
    [[nodiscard]] CString units() const { return unitsDirectory().string(); }
    static CMArchiveItem item(const CString &name) { return {name, "1.2", CMArchiveItem::readOnly, "", ""}; }
};

TEST_F(Unit, AnswersToItsNamesInAnyCase) {
    const CMUnit unit(&pumpIn("/w"));
    for (const char *name :
         {"Unit", "UNIT", "unitdirectory", "UnitPath", "UnitDirPath", "unitArchivePath", "UnitArchiveDir"}) {
        EXPECT_EQ(unit.isNamed(name), 1) << name;
    }
    for (const char *name : {"", "Units", "Uni", "archive"}) {
        EXPECT_EQ(unit.isNamed(name), 0) << name;
    }
}

TEST_F(Unit, GivesANameThatIsNotItsOwnBack) { EXPECT_EQ(CMUnit(&pumpIn("/w")).substitute("Label"), "Label"); }

TEST_F(Unit, GivesTheFileThePathAndTheDirectory) {
    CMUnit unit(&pumpIn("/w/sub"));
    EXPECT_EQ(unit.substitute("Unit"), "Pump.ocl");
    EXPECT_EQ(unit.substitute("UNITPATH"), "/w/sub/Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitDirPath"), "/w/sub");
    EXPECT_EQ(unit.getDirName(), "/w/sub");
}

TEST_F(Unit, CutsAPathWithBothSeparatorsAtTheLater) {
    auto &pump = pumpIn("");
    pump.fullFileName = R"(C:\w/sub\Pump.ocl)";
    EXPECT_EQ(CMUnit(&pump).getDirName(), R"(C:\w/sub)");
    pump.fullFileName = R"(C:\w\sub/Pump.ocl)";
    EXPECT_EQ(CMUnit(&pump).getDirName(), R"(C:\w\sub)");
}

TEST_F(Unit, WithoutADirectoryIsItsFileNameHere) {
    auto &pump = pumpIn("");
    pump.fullFileName = "Pump.ocl";
    CMUnit unit(&pump);
    EXPECT_EQ(unit.substitute("UnitPath"), "Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitDirPath"), ".");
    EXPECT_EQ(unit.substitute("UnitDirectory"), "");
}

TEST_F(Unit, JoinsWithTheHostsSeparator) {
    host.places.separator = '\\';
    EXPECT_EQ(CMUnit(&pumpIn("/w")).substitute("UnitPath"), R"(/w\Pump.ocl)");
}

TEST_F(Unit, OfNullIsEmptyText) {
    for (CMUnit *const unit : {new CMUnit(static_cast<const IUnit *>(nullptr)),
                               new CMUnit(static_cast<const CMArchiveItem *>(nullptr))}) {
        const std::unique_ptr<CMUnit> owned(unit);
        EXPECT_EQ(unit->substitute("Unit"), "");
        EXPECT_EQ(unit->substitute("UnitPath"), "");
        EXPECT_EQ(unit->substitute("UnitDirPath"), ".");
        EXPECT_EQ(unit->substitute("UnitArchivePath"), "");
        EXPECT_EQ(unit->substitute("UnitArchiveDir"), "");
    }
}

TEST_F(Unit, OfAnArchiveItemHasTheItemsPlace) {
    const auto pump = item("sub/Pump.ocl");
    CMUnit unit(&pump);
    EXPECT_EQ(unit.substitute("Unit"), "Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitDirPath"), units() + "/sub");
    EXPECT_EQ(unit.substitute("UnitPath"), units() + "/sub/Pump.ocl");
}

TEST_F(Unit, OfAnArchiveItemWithoutAPlaceIsHere) {
    host.model.activeProject = nullptr;
    const auto pump = item("sub/Pump.ocl");
    EXPECT_EQ(CMUnit(&pump).substitute("UnitDirPath"), ".");
}

// Below the working directory.

TEST_F(Unit, OneLevelBelowTheWorkingDirectoryGivesASeparatorAndTheName) {
    EXPECT_EQ(CMUnit(&pumpIn(units() + "/sub")).substitute("UnitDirectory"), "/sub");
    EXPECT_EQ(CMUnit(&pumpIn(units() + "/sub/deep")).substitute("UnitDirectory"), "/sub/deep");
}

TEST_F(Unit, InTheWorkingDirectoryOrElsewhereGivesNothing) {
    EXPECT_EQ(CMUnit(&pumpIn(units())).substitute("UnitDirectory"), "");
    EXPECT_EQ(CMUnit(&pumpIn("/elsewhere")).substitute("UnitDirectory"), "");
    EXPECT_EQ(CMUnit(&pumpIn("/x" + units() + "/sub")).substitute("UnitDirectory"), "");
}

TEST_F(Unit, LosesACharacterIfTheWorkingDirectoryEndsInASeparator) {
    auto &pump = pumpIn("/w/sub");
    project().directory = "/w/";
    EXPECT_EQ(CMUnit(&pump).substitute("UnitDirectory"), "/ub");
}

TEST_F(Unit, IsBelowNothingWithoutAProject) {
    CMUnit unit(&pumpIn(units() + "/sub"));
    host.model.activeProject = nullptr;
    EXPECT_EQ(unit.substitute("UnitDirectory"), "");
}

TEST_F(Unit, IsBelowTheUnitsDirectoryIfTheWorkingDirectoryIsEmpty) {
    setOldLayout();
    project().projectFileDirectory = "";
    EXPECT_EQ(CMUnit(&pumpIn(units() + "/sub")).substitute("UnitDirectory"), "/sub");
}

// In the archive.

TEST_F(Unit, IsMappedIntoTheArchive) {
    setToolProperty("Repository", "/arch$SubDirs");
    CMUnit unit(&pumpIn(units() + "/sub"));
    EXPECT_EQ(unit.substitute("UnitArchivePath"), "/arch/sub/Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitArchiveDir"), "/arch/sub");
}

TEST_F(Unit, TakesTheArchivesDirectoryFromItsOwnDirectoryAndThePathFromItsFile) {
    setToolProperty("Repository", "/arch$SubDirs");
    auto &pump = pumpIn(units() + "/own");
    pump.fullFileName = units() + "/other/Pump.ocl";
    CMUnit unit(&pump);
    EXPECT_EQ(unit.substitute("UnitArchiveDir"), "/arch/own");
    EXPECT_EQ(unit.substitute("UnitArchivePath"), "/arch/other/Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitDirPath"), units() + "/other");
}

TEST_F(Unit, IsNotMappedWithoutALayout) {
    CMUnit unit(&pumpIn("/w/sub"));
    EXPECT_EQ(unit.substitute("UnitArchivePath"), "/w/sub/Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitArchiveDir"), "");
}

TEST_F(Unit, LeavesTheArchivePathToTheExpansionIfTheTemplateNamesIt) {
    setToolProperty("Repository", "$ArchivePath/RCS");
    CMUnit unit(&pumpIn("/w/sub"));
    EXPECT_EQ(unit.substitute("UnitArchivePath"), "/w/sub/Pump.ocl");
    EXPECT_EQ(unit.substitute("UnitArchiveDir"), "$ArchivePath/RCS");
}

TEST_F(Unit, OfAnArchiveItemLeavesTheArchivePathToTheExpansionToo) {
    setToolProperty("Repository", "$ArchivePath/RCS");
    const auto pump = item("sub/Pump.ocl");
    EXPECT_EQ(CMUnit(&pump).substitute("UnitArchiveDir"), "$ArchivePath/RCS");
}

TEST_F(Unit, OfNullHasNoArchiveDirectoryWhateverTheTemplate) {
    setToolProperty("Repository", "$ArchivePath/RCS");
    EXPECT_EQ(CMUnit(static_cast<const IUnit *>(nullptr)).substitute("UnitArchiveDir"), "");
    EXPECT_EQ(CMUnit(static_cast<const CMArchiveItem *>(nullptr)).substitute("UnitArchiveDir"), "");
}

TEST_F(Unit, OfAnArchiveItemIsNotMapped) {
    setToolProperty("Repository", "/arch$SubDirs");
    const auto pump = item("/arch/sub/Pump.ocl,v");
    CMUnit unit(&pump);
    EXPECT_EQ(unit.substitute("UnitArchivePath"), "/arch/sub/Pump.ocl,v");
    EXPECT_EQ(unit.substitute("UnitArchiveDir"), "");
}

TEST_F(Unit, TracesTheExpansionOfTheLayoutForAnItemTooAlthoughItIsNotUsed) {
    traceOn();
    const auto pump = item("Pump.ocl");
    static_cast<void>(CMUnit(&pump).substitute("UnitArchivePath"));
    EXPECT_THAT(shown.str(), HasSubstr("+++ Expanding property 'Repository'\n"));
}

} // namespace
