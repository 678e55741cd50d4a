// Tests the entry that shows the dialog for connecting to an archive.
#include "CM/CMSupport/dispatch/ConnectDialog.h"

#include "tests/CM/CMSupport/dispatch/EntriesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ConnectDialog : public EntriesFixture {
  protected:
    ConnectDialog() {
        setGeneral("CMOperationStartSeparator", "<$Operation>");
        setGeneral("CMOperationEndSeparator", "</$Operation>");
    }
    ~ConnectDialog() override { dispatch::connectToArchiveDialog() = nullptr; }
    static void show() {
        const CMTranscation *const current = CMTranscation::getCurTranscation();
        RecordingHost::current().note(current != nullptr && current->getTranscationType() == CMTxnTool
                                          ? "dialog in a transaction"
                                          : "dialog");
    }
};

TEST_F(ConnectDialog, IsShownInsideATransactionOfATool) {
    dispatch::connectToArchiveDialog() = show;
    EXPECT_EQ(CMFacade::doConnectToArcDlg(), 1);
    EXPECT_THAT(host.callsOf("dialog"), ElementsAre("dialog in a transaction"));
    EXPECT_THAT(host.callsOf("undo"), IsEmpty()) << "this type makes no undo step";
    const std::string name = CMTranscation::getOperationNameFromType(CMTxnTool).str();
    EXPECT_EQ(host.window.text(), "<" + name + "></" + name + ">");
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
}

TEST_F(ConnectDialog, IsShownWithoutAToolAndWithoutAProjectToo) {
    dispatch::connectToArchiveDialog() = show;
    host.setTool("None");
    EXPECT_EQ(CMFacade::doConnectToArcDlg(), 1);
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMFacade::doConnectToArcDlg(), 1);
    EXPECT_EQ(host.callsOf("dialog").size(), 2U);
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(ConnectDialog, WithoutADialogOnlyTheSeparatorsAppear) {
    EXPECT_EQ(CMFacade::doConnectToArcDlg(), 1);
    EXPECT_NE(host.window.text(), "");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

} // namespace
