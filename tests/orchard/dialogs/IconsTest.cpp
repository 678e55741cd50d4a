// Tests the host's icons, the images of the states of units, and the icons of files.
#include "CM/host/DialogHelpers.h"
#include "CM/platform/dialog/CDialog.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <gmock/gmock.h>

namespace {

class Icons : public testing::Test {
  protected:
    Icons() { GetOrchardIconsList(images, true); }
    [[nodiscard]] std::string iconOf(const IDObject *object) const {
        return images.name(oiGetObjectIcon(object)).str();
    }

    RecordingHost host;
    CImageList images;
};

TEST_F(Icons, TellEveryKindOfElement) {
    auto &project = host.addProject();
    EXPECT_EQ(iconOf(&project), "project");
    EXPECT_EQ(iconOf(host.model.workspace), "workspace");
    EXPECT_EQ(iconOf(&host.addSubsystem("Drives")), "subsystem");
    EXPECT_EQ(iconOf(&host.addUnit("Pump")), "class");
    auto &component = host.addComponent("Main");
    EXPECT_EQ(iconOf(&component), "component");
    EXPECT_EQ(iconOf(&host.addConfiguration("Debug", component)), "configuration");
    auto &file = host.addFile("Code", &component);
    EXPECT_EQ(iconOf(&file), "file");
    EXPECT_EQ(iconOf(&host.addFragment("part", &file)), "fragment");
    EXPECT_EQ(iconOf(&host.addEmbeddedFile("notes.txt")), "embedded file");
    EXPECT_EQ(iconOf(&host.addElement("speed")), "element");
}

TEST_F(Icons, NothingHasNoIcon) { EXPECT_EQ(oiGetObjectIcon(nullptr), -1); }

TEST_F(Icons, HaveTheOverlaysWhereTheLibraryLooksForThem) {
    EXPECT_EQ(images.name(3), "unit overlay");
    EXPECT_EQ(images.name(12), "modified overlay");
}

TEST_F(Icons, FillTheListAfreshAndInTheSizeThatIsAskedFor) {
    const int count = images.GetImageCount();
    GetOrchardIconsList(images, false);
    EXPECT_EQ(images.GetImageCount(), count);
    EXPECT_EQ(images.name(0), "large project");
}

TEST_F(Icons, OfFilesAreLoadedOnceForEachExtension) {
    CShellIconLoader loader(images);
    const int first = images.GetImageCount();
    EXPECT_EQ(loader.DoGetShellIcon("/models/notes.txt"), first);
    EXPECT_EQ(loader.DoGetShellIcon("plan.doc"), first + 1);
    EXPECT_EQ(loader.DoGetShellIcon("OTHER.TXT"), first);
    EXPECT_EQ(images.GetImageCount(), first + 2);
    EXPECT_EQ(images.name(first + 1), "file.doc");
}

TEST_F(Icons, AFileWithoutAnExtensionHasThePlainFileIcon) {
    CShellIconLoader loader(images);
    const int plain = loader.DoGetShellIcon("/models.v2/Makefile");
    EXPECT_EQ(images.name(plain), "file");
    EXPECT_EQ(loader.DoGetShellIcon(".hidden"), plain);
    EXPECT_EQ(loader.DoGetShellIcon("C:\\models.v2\\Makefile"), plain);
}

class TestDialog : public CDialog {
  public:
    TestDialog() : CDialog("test") {}
};

class StateImages : public testing::Test {
  protected:
    StateImages() {
        host.addProject().showStatus = true;
        pump = &host.addUnit("Pump");
        tree.SetUpStateImageList();
    }
    std::string imageOf(long state) {
        pump->cmState = state;
        return tree.stateImages().name(CMStateAwareTreeCtrl::GetCMStateImageInd(pump)).str();
    }

    RecordingHost host;
    recording::Class *pump = nullptr;
    TestDialog dialog;
    CMStateAwareTreeCtrl tree{dialog, "tree", "Units"};
};

TEST_F(StateImages, TellTheStateOfAUnit) {
    EXPECT_EQ(imageOf(0), "not controlled");
    EXPECT_EQ(imageOf(1), "controlled");
    EXPECT_EQ(imageOf(1 | 2), "checked out");
    EXPECT_EQ(imageOf(1 | 4), "checked out by another");
    EXPECT_EQ(imageOf(1 | 4096), "checked out elsewhere");
    EXPECT_EQ(imageOf(1 | 2 | 64), "deleted");
    EXPECT_EQ(imageOf(2), "not controlled") << "the other bits count for a controlled file only";
}

TEST_F(StateImages, AreNoneWithoutAStateToShow) {
    pump->cmState = 1;
    EXPECT_NE(CMStateAwareTreeCtrl::GetCMStateImageInd(pump), 0);
    EXPECT_EQ(CMStateAwareTreeCtrl::GetCMStateImageInd(nullptr), 0);
    EXPECT_EQ(imageOf(-1), "none") << "the invalid state";
    pump->cmState = 1;
    host.model.activeProject->showStatus = false;
    EXPECT_EQ(CMStateAwareTreeCtrl::GetCMStateImageInd(pump), 0);
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMStateAwareTreeCtrl::GetCMStateImageInd(pump), 0);
}

} // namespace
