#include "CM/CMSupport/core/CMArchiveItem.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class Values : public CoreFixture {
  protected:
    void setScc(const CString &key, const CString &value) {
        host.setProperty(nullptr, IPN::CM, "SCC", key, value);
    }
    void setButton(const CString &key, const CString &value) {
        host.setProperty(nullptr, IPN::CM, "CustomButton", key, value);
    }
};

TEST_F(Values, TakesAnyTextAsTheOldLayout) {
    EXPECT_FALSE(CMProperty::isPre40Compatible());
    setToolProperty("SupportTreeRepository", "");
    EXPECT_FALSE(CMProperty::isPre40Compatible());
    setToolProperty("SupportTreeRepository", "No");
    EXPECT_TRUE(CMProperty::isPre40Compatible());
}

TEST_F(Values, RunsToolsInTheProjectsDirectoryForUnits) {
    EXPECT_EQ(CMProperty::getWorkingDir(), unitsDirectory().string());
}

TEST_F(Values, RunsToolsBesideTheProjectFileInTheOldLayout) {
    setOldLayout();
    EXPECT_EQ(CMProperty::getWorkingDir(), scratch.string());
}

TEST_F(Values, HasNoWorkingDirectoryWithoutAProject) {
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMProperty::getWorkingDir(), "");
}

TEST_F(Values, RemembersTheNameOfTheProvider) {
    CString name = "before";
    CMProperty::setSCCToolName("Basalt");
    CMProperty::getSCCToolName(name);
    EXPECT_EQ(name, "Basalt");
    EXPECT_EQ(CMProperty::SCCToolName, "Basalt");
    CMProperty::setSCCToolName("");
}

TEST_F(Values, LetsTheLastAnswerAboutStatusStandWithoutAProject) {
    host.model.usingTSV = true;
    project().showStatus = true;
    EXPECT_EQ(CMProperty::getShowCMStatus(), 1);
    EXPECT_TRUE(project().askedUsingTSV);
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMProperty::getShowCMStatus(), 1);
    host.model.activeProject = &project();
    project().showStatus = false;
    EXPECT_EQ(CMProperty::getShowCMStatus(), 0);
}

TEST_F(Values, WantsACommandAndAnImageForTheCustomButton) {
    EXPECT_FALSE(CMProperty::CheckCustomButton());
    setButton("CustomButtonCmd", "make");
    EXPECT_FALSE(CMProperty::CheckCustomButton());
    setButton("CustomButtonImg", "");
    EXPECT_FALSE(CMProperty::CheckCustomButton());
    setButton("CustomButtonImg", "make.png");
    EXPECT_TRUE(CMProperty::CheckCustomButton());
    setButton("CustomButtonCmd", "");
    EXPECT_FALSE(CMProperty::CheckCustomButton());
}

TEST_F(Values, NeedsNoClosingOfAProjectThatNamesAProviderProject) {
    EXPECT_EQ(CMProperty::closeProjectNeeded(), 1);
    setScc("ProjName", "");
    EXPECT_EQ(CMProperty::closeProjectNeeded(), 1);
    setScc("ProjName", "$/Plant");
    EXPECT_EQ(CMProperty::closeProjectNeeded(), 0);
}

TEST_F(Values, NeedsClosingWithoutAProject) {
    setScc("ProjName", "$/Plant");
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMProperty::closeProjectNeeded(), 1);
}

TEST_F(Values, TakesTheProjectsArchivesWithoutAUnit) {
    setScc("ProjName", "$/Plant");
    setScc("AuxProjPath", "aux");
    setToolProperty(IPN::CMArchive, "/archive");
    CString name;
    CString path;
    CString archive;
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(nullptr, name, path), 1);
    EXPECT_EQ(name, "$/Plant");
    EXPECT_EQ(path, "aux");
    EXPECT_EQ(CMProperty::getBatchArchiveRecursive(nullptr, archive), 1);
    EXPECT_EQ(archive, "/archive");
}

TEST_F(Values, PrefersTheUnitsOwnProviderArchive) {
    auto &unit = host.addClass("Pump");
    unit.setSccArchive("$/Own", "aux of its own");
    setScc("ProjName", "$/Plant");
    CString name;
    CString path;
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(&unit, name, path), 1);
    EXPECT_EQ(name, "$/Own");
    EXPECT_EQ(path, "aux of its own");
}

TEST_F(Values, FallsBackToTheProjectsProviderArchive) {
    auto &unit = host.addClass("Pump");
    CString name = "before";
    CString path = "before";
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(&unit, name, path), 0);
    EXPECT_EQ(name, "before");
    setScc("AuxProjPath", "aux");
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(&unit, name, path), 0);
    EXPECT_EQ(path, "before") << "read only behind a project name";
    setScc("ProjName", "$/Plant");
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(&unit, name, path), 1);
    EXPECT_EQ(name, "$/Plant");
    EXPECT_EQ(path, "aux");
}

TEST_F(Values, CountsAnEmptyProviderProjectAsNoArchive) {
    setScc("ProjName", "");
    CString name = "before";
    CString path = "before";
    EXPECT_EQ(CMProperty::getSccArchiveRecursive(&host.addClass("Pump"), name, path), 0);
    EXPECT_EQ(name, "");
    EXPECT_EQ(path, "before");
}

TEST_F(Values, PrefersTheUnitsOwnArchiveAndFallsBackToTheMainOne) {
    auto &unit = host.addClass("Pump");
    CString archive = "before";
    EXPECT_EQ(CMProperty::getBatchArchiveRecursive(&unit, archive), 0);
    EXPECT_EQ(archive, "");
    setToolProperty(IPN::CMArchive, "/archive");
    EXPECT_EQ(CMProperty::getBatchArchiveRecursive(&unit, archive), 1);
    EXPECT_EQ(archive, "/archive");
    unit.setBatchArchive("/own");
    EXPECT_EQ(CMProperty::getBatchArchiveRecursive(&unit, archive), 1);
    EXPECT_EQ(archive, "/own");
}

TEST_F(Values, KeepsTheFlagForSavingOnCheckOut) {
    EXPECT_EQ(CMProperty::saveOnCheckout(2), 1) << "what it starts with";
    EXPECT_EQ(CMProperty::saveOnCheckout(0), 0);
    EXPECT_EQ(CMProperty::saveOnCheckout(2), 0);
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 0);
    EXPECT_EQ(CMProperty::saveOnCheckout(1), 1);
    EXPECT_EQ(CMProperty::saveOnCheckout(2), 1);
}

TEST_F(Values, ReloadsAllFilesButEmbeddedOnes) {
    const CMArchiveItem unit("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    const CMArchiveItem picture("Pump.png", "1.1", CMArchiveItem::readOnly, "", "");
    EXPECT_TRUE(CMProperty::FileNeedsATM(&unit));
    EXPECT_FALSE(CMProperty::FileNeedsATM(&picture));
    EXPECT_FALSE(CMProperty::FileNeedsATM(nullptr));
}

} // namespace
