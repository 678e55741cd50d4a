#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"
#include "tests/CM/CMSupport/core/shared/FlushedText.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Outputer : public CoreFixture {};

TEST_F(Outputer, GivesTheStreamToReadAndToStore) {
    EXPECT_EQ(getMainCMOutputer()(), &shown);
    getMainCMOutputer()() = nullptr;
    EXPECT_EQ(getMainCMOutputer()(), nullptr);
}

TEST_F(Outputer, WritesATextOnALineOfItsOwnAndShowsTheWindow) {
    CMOutputer::writeToCMOutputWnd("reading Pump");
    EXPECT_EQ(host.window.text(), "\nreading Pump\n");
    EXPECT_THAT(host.callsOf("show window"), ElementsAre("show window 1"));
    EXPECT_TRUE(shown.str().empty()) << "the window's own stream is meant";
}

TEST_F(Outputer, FlushesWhatItWrites) {
    const FlushedText buffer(host.window.stream);
    CMOutputer::writeToCMOutputWnd("reading Pump");
    EXPECT_EQ(buffer.flushed(), "\nreading Pump\n");
}

TEST_F(Outputer, IgnoresAnEmptyText) {
    CMOutputer::writeToCMOutputWnd("");
    EXPECT_TRUE(host.window.text().empty());
    EXPECT_THAT(host.callsOf("show window"), IsEmpty());
}

TEST_F(Outputer, WritesNothingWithoutAManagerOrAStream) {
    host.window.hasStream = false;
    CMOutputer::writeToCMOutputWnd("reading Pump");
    EXPECT_THAT(host.callsOf("show window"), IsEmpty());
    host.window.hasStream = true;
    host.window.managerExists = false;
    CMOutputer::writeToCMOutputWnd("reading Pump");
    EXPECT_TRUE(host.window.text().empty());
}

TEST_F(Outputer, ReportsALoadingErrorInTheWindow) {
    setToolProperty("ReportLoadingError", "output window");
    CMOutputer::reportLoadingErrror("Pump is broken");
    EXPECT_EQ(host.window.text(), "\nERROR : Pump is broken\n");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Outputer, ReportsALoadingErrorInABoxWithTheBareText) {
    setToolProperty("ReportLoadingError", "MESSAGE BOX");
    CMOutputer::reportLoadingErrror("Pump is broken");
    EXPECT_TRUE(host.window.text().empty());
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, "Pump is broken");
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_EQ(host.messages.shown[0].level, 2);
}

TEST_F(Outputer, ReportsALoadingErrorInBothTheWindowFirst) {
    setToolProperty("ReportLoadingError", "Both");
    CMOutputer::reportLoadingErrror("Pump is broken");
    EXPECT_THAT(host.calls, ElementsAre("show window 1", "ask 16: Pump is broken"));
    EXPECT_EQ(host.window.text(), "\nERROR : Pump is broken\n");
}

TEST_F(Outputer, ReportsALoadingErrorNowhereOtherwise) {
    CMOutputer::reportLoadingErrror("Pump is broken");
    setToolProperty("ReportLoadingError", "Somewhere");
    CMOutputer::reportLoadingErrror("Pump is broken");
    setToolProperty("ReportLoadingError", "Both");
    CMOutputer::reportLoadingErrror("");
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(Outputer, TakesTheMainWindowForTheTopMostOneWhileItIsEnabled) {
    host.mainWindow.exists = true;
    recording::MainWindow popup;
    host.mainWindow.popup = &popup;
    EXPECT_EQ(CMOutputer::getTopMostWindow(), &host.mainWindow);
    host.mainWindow.enabled = false;
    EXPECT_EQ(CMOutputer::getTopMostWindow(), &popup);
}

TEST_F(Outputer, KnowsNoTopMostWindowWithoutAMainWindow) { EXPECT_EQ(CMOutputer::getTopMostWindow(), nullptr); }

} // namespace
