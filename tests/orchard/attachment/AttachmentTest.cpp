#include "orchard/attachment/Attachment.h"

#include "CM/host/Environment.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/LogTrace.h"
#include "orchard/messages/ScriptedDialogDriver.h"
#include "orchard/storage/LibraryFacade.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

class Library final : public IBaseCMFacade {
  public:
    CString getTheDefaultHeader() override { return {}; }
    void RefreshCMStatus() override {}
};

/// Whether nothing is attached.
void expectNothing() {
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
    EXPECT_EQ(IAbstractCMManager::GetCMManager(), nullptr);
    EXPECT_FALSE(orchard::runWatch().started);
    EXPECT_EQ(orchard::cmFacade(), nullptr);
}

TEST(Attachment, AttachesAllAndTakesAllBack) {
    const auto log = std::filesystem::temp_directory_path() / ("orchard-attach-" + std::to_string(getpid()));
    orchard::ScriptedDialogDriver driver;
    std::ostringstream window;
    Library library;
    expectNothing();
    {
        const orchard::Attachment attachment({.dialogs = &driver,
                                              .cmOutput = &window,
                                              .runs = {[](const std::string &) {}, {}, {}},
                                              .library = &library,
                                              .logFile = log});
        ASSERT_NE(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
        EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface()->dialogDriver(), &driver);
        ASSERT_NE(IAbstractCMManager::GetCMManager(), nullptr);
        EXPECT_EQ(IAbstractCMManager::GetCMManager()->getOutputStream(), &window);
        EXPECT_TRUE(orchard::runWatch().started);
        EXPECT_EQ(orchard::cmFacade(), &library);
        LogTrace::Log(LogTrace::Log::cm).Min("test", 1, "attached");
    }
    expectNothing();
    const auto size = std::filesystem::file_size(log);
    EXPECT_GT(size, 0U);
    LogTrace::Log(LogTrace::Log::cm).Min("test", 1, "detached");
    EXPECT_EQ(std::filesystem::file_size(log), size);
    std::filesystem::remove(log);
}

TEST(Attachment, GivesVariablesTheirValuesAgainTheLastFirst) {
    int first = 1;
    std::string second = "before";
    {
        orchard::Attachment attachment({});
        attachment.set(first, 2);
        attachment.set(second, "between");
        attachment.set(second, "attached");
        EXPECT_EQ(first, 2);
        EXPECT_EQ(second, "attached");
    }
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, "before");
}

TEST(Attachment, ALogFileThatCannotBeOpenedAttachesNothing) {
    orchard::ScriptedDialogDriver driver;
    EXPECT_THROW(orchard::Attachment({.dialogs = &driver, .logFile = "/no/such/directory/log"}),
                 std::runtime_error);
    expectNothing();
}

} // namespace
