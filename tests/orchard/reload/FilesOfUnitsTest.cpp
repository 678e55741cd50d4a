#include "tests/orchard/storage/Workbench.h"

#include "CM/host/Reload.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

using testing::ElementsAre;

namespace {

class FilesOfUnits : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    /// Relative to the units directory.
    [[nodiscard]] std::vector<std::string> names(const CStringList &files) const {
        std::vector<std::string> relative;
        for (const CString &file : files) {
            relative.push_back(std::filesystem::relative(file.str(), path("Pump_ory")).string());
        }
        return relative;
    }
};

TEST_F(FilesOfUnits, OfAUnitAndWhatIsBelow) {
    CStringList one;
    ATMRecursiveHelper::getListOFFilesIn(unit("Control"), one, 0, 0);
    EXPECT_THAT(names(one), ElementsAre("Control/Control.osb"));
    CStringList all;
    ATMRecursiveHelper::getListOFFilesIn(unit("Control"), all, 1, 0);
    EXPECT_THAT(names(all), ElementsAre("Control/Control.osb", "Control/PumpController.ocl",
                                        "Control/LevelRegulator.ocl", "Control/AlarmList.ocl"));
    CStringList withInformation;
    ATMRecursiveHelper::getListOFFilesIn(unit("Control"), withInformation, 1, 1);
    EXPECT_THAT(names(withInformation),
                ElementsAre("Control/Control.osb", "Control/PumpController.ocl", "ControlCode.ofl",
                            "Control/LevelRegulator.ocl", "Control/AlarmList.ocl"));
}

TEST_F(FilesOfUnits, OfAUnitFileAreThoseThatItNamesNow) {
    edit(unitFile("Drives.osb"), "Valve.ocl", "Gate.ocl");
    CStringList files;
    ATMRecursiveHelper::getListOFFilesIn(unitFile("Drives.osb"), files, 0);
    EXPECT_THAT(names(files), ElementsAre("Pump.ocl", "Gate.ocl", "Sensors.osb"));
    CStringList leaf;
    ATMRecursiveHelper::getListOFFilesIn(unitFile("Panel.ocl"), leaf, 0);
    ATMRecursiveHelper::getListOFFilesIn(path("none"), leaf, 0);
    EXPECT_TRUE(leaf.IsEmpty());
}

TEST_F(FilesOfUnits, OfADirectory) {
    CStringList files;
    ATMRecursiveHelper::getListOFFilesIn(path("Pump_ory/Control"), files, 0);
    EXPECT_EQ(files.GetCount(), 4);
    CStringList all;
    ATMRecursiveHelper::getListOFFilesIn(path("Pump_ory"), all, 1);
    EXPECT_EQ(all.GetCount(), 17);
}

TEST_F(FilesOfUnits, OfADirectoryAreNotThoseThatAToolKeepsThere) {
    for (const char *const kept : {"RCS", ".git/objects", "Control/RCS"}) {
        std::filesystem::create_directories(path("Pump_ory/") + kept);
        std::ofstream(path("Pump_ory/") + kept + "/Pump.ocl,v") << "x";
    }
    CStringList all;
    ATMRecursiveHelper::getListOFFilesIn(path("Pump_ory"), all, 1);
    EXPECT_EQ(all.GetCount(), 17);
    CStringList asked;
    ATMRecursiveHelper::getListOFFilesIn(path("Pump_ory/RCS"), asked, 1);
    EXPECT_EQ(asked.GetCount(), 1) << "a directory that is asked for is listed, whatever its name";
}

TEST_F(FilesOfUnits, AnUnreadableDirectoryCostsOnlyWhatIsInIt) {
    namespace fs = std::filesystem;
    if (geteuid() == 0) {
        GTEST_SKIP() << "no directory is closed to this user";
    }
    fs::create_directory(path("Pump_ory/AClosed"));
    fs::permissions(path("Pump_ory/AClosed"), fs::perms::none);
    CStringList all;
    ATMRecursiveHelper::getListOFFilesIn(path("Pump_ory"), all, 1);
    EXPECT_EQ(all.GetCount(), 17);
    fs::permissions(path("Pump_ory/AClosed"), fs::perms::owner_all);
}

TEST_F(FilesOfUnits, InformationUnitsAreTheCodeFilesThatStandForAUnit) {
    CList<IUnit *, IUnit *> units;
    ATMRecursiveHelper::getListOFInformationUnits(unit("PumpController"), units);
    ASSERT_EQ(units.GetCount(), 1);
    EXPECT_EQ(units.GetHead(), unit("ControlCode"));
    CStringList files;
    ATMRecursiveHelper::getListOFInformationFiles(unitFile("Pump.ocl"), files);
    ATMRecursiveHelper::getListOFInformationFiles(unitFile("Panel.ocl"), files);
    EXPECT_THAT(names(files), ElementsAre("DrivesCode.ofl"));
}

} // namespace
