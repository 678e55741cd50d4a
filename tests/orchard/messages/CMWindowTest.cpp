#include "orchard/messages/CMWindow.h"

#include "CM/host/Environment.h"
#include "CM/host/IAbstractCMManager.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/ScriptedDialogDriver.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(CMWindow, HasNoManagerWithoutAStream) {
    orchard::setCMOutputStream(nullptr);
    EXPECT_EQ(IAbstractCMManager::GetCMManager(), nullptr);
}

TEST(CMWindow, WritesToTheStreamRemembersThatItIsShownAndIsCleared) {
    std::ostringstream stream;
    orchard::setCMOutputStream(&stream, [&] { stream.str(""); });
    IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
    ASSERT_NE(manager, nullptr);
    ASSERT_EQ(manager->getOutputStream(), &stream);
    EXPECT_FALSE(orchard::isCMOutputShown());
    manager->showOutputWindow(true);
    EXPECT_TRUE(orchard::isCMOutputShown());
    *manager->getOutputStream() << "text";
    ASSERT_NE(manager->getOutputWindow(), nullptr);
    manager->getOutputWindow()->clear();
    EXPECT_EQ(stream.str(), "");
    orchard::setCMOutputStream(&stream);
    manager->getOutputWindow()->clear();
    orchard::setCMOutputStream(nullptr);
}

TEST(DialogSetup, GivesTheLibraryItsDriver) {
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
    orchard::ScriptedDialogDriver driver;
    orchard::setDialogDriver(&driver);
    ASSERT_NE(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface()->dialogDriver(), &driver);
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentOutputInterface()->dialogDriver(), &driver);
    orchard::setDialogDriver(nullptr);
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
    EXPECT_NE(IEnvironmentInterface::Instance(), nullptr);
    EXPECT_EQ(OrpAfxGetMainWnd(), nullptr);
}

} // namespace
