// Tests the services of the recording host: what each records, and how a test sets its answers.
#include "CM/host/Environment.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/IBaseCMFacade.h"
#include "CM/host/LoadOnDemandManager.h"
#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/host/Reload.h"
#include "CM/host/RunThread.h"
#include "CM/host/SPString.h"
#include "CM/host/Undoer.h"
#include "CM/host/Utilities.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <memory>

using testing::ElementsAre;

namespace {

class RecordingHostServices : public testing::Test {
  protected:
    RecordingHost host;
};

TEST_F(RecordingHostServices, RecordsUndoBrackets) {
    Undoer::instance()->startTransaction(nullptr, 1, 0, 0);
    EXPECT_EQ(host.undo.depth, 1);
    Undoer::endTransaction();
    Undoer::startDoNothingTransaction();
    Undoer::endDoNothingTransaction();
    { const UnUndoableTransaction guard(1); }
    { const INObject::IgnoreCGModification guard; }
    EXPECT_THAT(host.calls, ElementsAre("undo start flag=1", "undo end", "undo nothing start", "undo nothing end",
                                        "undo none start flag=1", "undo none end", "ignore code generation start",
                                        "ignore code generation end"));
    host.undo.exists = false;
    EXPECT_EQ(Undoer::instance(), nullptr);
}

TEST_F(RecordingHostServices, AnswersQuestionsFromTheScript) {
    host.messages.answers = {IDYES, IDCANCEL};
    EXPECT_EQ(notifyUserAndAsk("go on?", MB_YESNO | MB_ICONQUESTION, 0, messageLevelDefault), IDYES);
    EXPECT_EQ(OneTimeMessageBox("title", "text", "don't ask again", 1, "key", MB_YESNO, 0), IDCANCEL);
    EXPECT_EQ(notifyUserAndAsk("and now?", MB_ICONHAND, 0, messageLevelDefault), IDNO);
    notifyUser("done", messageLevelDefault);
    { const SilenceMessageObject silence(1); }
    EXPECT_THAT(host.calls,
                ElementsAre("ask 36: go on?", "ask once 4 key=key title=title box=don't ask again 1 0: text",
                            "ask 16: and now?", "notify: done", "silence start flag=1", "silence end"));
    ASSERT_EQ(host.messages.shown.size(), 4U);
    EXPECT_EQ(host.messages.shown.front().level, 2);
}

TEST_F(RecordingHostServices, RecordsTheLog) {
    {
        LogTrace::Log log(LogTrace::Log::cm);
        EXPECT_EQ(host.logsOpen, 1);
        log.Min("../CM/CMSupport/CheckOut", 77, "text");
    }
    EXPECT_EQ(host.logsOpen, 0);
    EXPECT_EQ(host.logLines.front().line, 77);
    EXPECT_THAT(host.calls, ElementsAre("log 4 ../CM/CMSupport/CheckOut: text"));
}

TEST_F(RecordingHostServices, HasAnOutputWindowThatCanBeAbsent) {
    IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
    *manager->getOutputStream() << "hello";
    EXPECT_EQ(host.window.text(), "hello");
    manager->showOutputWindow(true);
    manager->getOutputWindow()->clear();
    EXPECT_EQ(host.window.text(), "");
    EXPECT_THAT(host.calls, ElementsAre("show window 1", "clear window"));
    host.window.hasStream = false;
    host.window.hasWindow = false;
    EXPECT_EQ(manager->getOutputStream(), nullptr);
    EXPECT_EQ(manager->getOutputWindow(), nullptr);
    host.window.managerExists = false;
    EXPECT_EQ(IAbstractCMManager::GetCMManager(), nullptr);
}

TEST_F(RecordingHostServices, GivesTheTestsDialogDriverAndMainWindow) {
    int marker = 0;
    host.environment.dialogDriver = reinterpret_cast<platform::DialogDriver *>(&marker);
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface()->dialogDriver(),
              host.environment.dialogDriver);
    host.environment.hasInterfaceToUser = false;
    EXPECT_EQ(IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface(), nullptr);
    EXPECT_NE(IAbsEnvironmentInterface::CurrentOutputInterface(), nullptr);
    EXPECT_NE(IEnvironmentInterface::Instance(), nullptr);

    EXPECT_EQ(OrpAfxGetMainWnd(), nullptr);
    host.mainWindow.exists = true;
    EXPECT_EQ(OrpAfxGetMainWnd()->GetLastActivePopup(), &host.mainWindow);
}

TEST_F(RecordingHostServices, ReloadsAsTheTestScriptsIt) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    host.reload.canReload = [](const IUnit *, int flag) { return flag == 0; };
    host.reload.compare = [](const CString &path) { return path == "/x/Pump.ocl" ? 1 : 0; };
    host.reload.addToModel = [&](const CString &, const CString &, int) -> IUnit * { return &pump; };
    {
        QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
        EXPECT_TRUE(QuickATMFacade::CanReloadUnit(&pump, 0));
        EXPECT_FALSE(QuickATMFacade::CanReloadUnit(&pump, 1));
        EXPECT_EQ(scope.reloadUnit(&pump, 0, 0), &pump);
    }
    EXPECT_EQ(ATMFacade("/x").addToModel("Pump.ocl", 0, 0, 0, false, nullptr), &pump);
    {
        CCMFileCompare compare("/x/Pump.ocl");
        compare.LoadFile1();
        compare.LoadFile2();
        EXPECT_EQ(compare.Compare(), 1);
        compare.atm(&pump);
    }
    CStringList files;
    ATMRecursiveHelper::getListOFFilesIn("/x", files, 1);
    EXPECT_THAT(host.calls, ElementsAre("reload scope start", "can reload Pump flag=0 -> 1",
                                        "can reload Pump flag=1 -> 0", "reload Pump flag=0", "reload scope end",
                                        "loader start /x", "add to model Pump.ocl flag=0", "loader end",
                                        "compare start /x/Pump.ocl", "compare load before", "compare load after",
                                        "compare -> 1", "compare atm Pump", "compare end", "files in /x flag=1"));
}

TEST_F(RecordingHostServices, GivesTheInformationFilesOfTheScript) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    host.reload.informationUnits = [&](const IUnit *, CList<IUnit *, IUnit *> &units) { units.AddTail(&pump); };
    host.reload.informationFiles = [](const CString &, CStringList &files) { files.AddTail("a.inf"); };
    host.reload.filesInUnit = [](const IUnit *, CStringList &files, int, int) { files.AddTail("Pump.ocl"); };
    CList<IUnit *, IUnit *> units;
    CStringList files;
    ATMRecursiveHelper::getListOFInformationUnits(&pump, units);
    ATMRecursiveHelper::getListOFInformationFiles("Pump.ocl", files);
    ATMRecursiveHelper::getListOFFilesIn(&pump, files, 1, 0);
    EXPECT_THAT(units, ElementsAre(&pump));
    EXPECT_THAT(files, ElementsAre(CString("a.inf"), CString("Pump.ocl")));
}

TEST_F(RecordingHostServices, RunsCommandsThroughTheTestsFunction) {
    host.worker.run = [](const CString &command) {
        recording::ToolRun run;
        run.outputLines = {"out of " + command + "\n"};
        run.errorLines = {"warning\n"};
        run.status = command == "slow" ? WAIT_TIMEOUT : 0;
        return run;
    };
    {
        const auto run = std::make_unique<RunThread>("co Pump");
        EXPECT_EQ(run->getStatus(-1), 0);
        EXPECT_THAT(run->outputLines, ElementsAre(CString("out of co Pump\n")));
        EXPECT_THAT(run->errorLines, ElementsAre(CString("warning\n")));
    }
    EXPECT_EQ(RunThread("slow").getStatus(10), WAIT_TIMEOUT);
    EXPECT_EQ(host.worker.alive, 0);
    EXPECT_THAT(host.calls, ElementsAre("run co Pump", "wait -1", "run end", "run slow", "wait 10", "run end"));
}

TEST_F(RecordingHostServices, WritesTheOutputOfARedirectedRunToTheHandle) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"one\n", "two\n"}, {}, 0}; };
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::tmpfile(), std::fclose);
    ASSERT_NE(file, nullptr);
    const RunThreadRedirect run("list", fileno(file.get()));
    EXPECT_TRUE(run.outputLines.IsEmpty());
    std::rewind(file.get());
    char line[16] = {};
    ASSERT_NE(std::fgets(line, sizeof line, file.get()), nullptr);
    EXPECT_STREQ(line, "one\n");
    EXPECT_THAT(host.calls, ElementsAre("run redirected list"));
}

TEST_F(RecordingHostServices, AnswersForPlacesAndSettings) {
    CString text;
    CString error;
    EXPECT_EQ(oqGetEnvVar("General", "DEBUG_CM", text, nullptr), 0);
    host.setSetting("DEBUG_CM", "TRUE");
    EXPECT_EQ(oqGetEnvVar("General", "DEBUG_CM", text, nullptr), 1);
    EXPECT_EQ(text, "TRUE");
    EXPECT_EQ(host.places.settingsRead.size(), 2U);

    EXPECT_EQ(oqGetRoot(text, error), 1);
    host.places.root.Empty();
    EXPECT_EQ(oqGetRoot(text, error), 0);
    EXPECT_EQ(error, "no installation root");

    host.places.currentDirectory = "/models";
    EXPECT_EQ(oqGetFullPathOfDirectory("", error), "/models");
    EXPECT_EQ(oqGetFullPathOfDirectory("../a/", error), "/a");
    host.places.fullPathError = "gone";
    EXPECT_EQ(oqGetFullPathOfDirectory("", error), "");
    EXPECT_EQ(error, "gone");

    EXPECT_EQ(oqGetCurrentUser() + oqGetCurrentDate() + oqGetCurrentTime(), "ann2024-03-0110:20:30");
    EXPECT_EQ(oqGetTempDir() + oqPathSeparator() + oqGetErrorCodeString(), "/tmp/no such file");
}

TEST_F(RecordingHostServices, AsksTheDiskAboutFilesUnlessTheTestSaysOtherwise) {
    const std::string path = testing::TempDir() + "recording_host_file";
    std::ofstream(path) << "x";
    EXPECT_TRUE(oqFileExist(path) && oqFileExistsAndNonEmpty(path) && oqFileHasWritePermission(path));
    EXPECT_GT(oqGetFileLastModifiedTime(path), 0);
    host.places.writable[path] = false;
    EXPECT_FALSE(oqFileHasWritePermission(path));
    EXPECT_EQ(oqMoveFileEx(path, path + "2", 1), 1);
    EXPECT_EQ(oqDeleteFile(path + "2", 1), 1);
    EXPECT_EQ(oqDeleteFile(path + "2", 1), 0);
    EXPECT_FALSE(oqFileExist(path));
    EXPECT_THAT(host.callsOf("move file"), ElementsAre("move file " + path + " to " + path + "2 flags=1"));
}

TEST_F(RecordingHostServices, SplitsPathsAtEitherSeparator) {
    CString directory;
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension("/a/b\\Pump.1.ocl", directory, file, extension);
    EXPECT_EQ(directory, "/a/b");
    EXPECT_EQ(file, "Pump.1");
    EXPECT_EQ(extension, ".ocl");
    EXPECT_TRUE(oqIsAbsolutePath("C:\\x") && oqIsAbsolutePath("/x") && !oqIsAbsolutePath("x/y"));
}

TEST_F(RecordingHostServices, CompletesALoadAsTheTestSays) {
    EXPECT_EQ(LoadOnDemandManager::instance(), nullptr);
    host.loadOnDemand.exists = true;
    host.loadOnDemand.result = 0;
    EXPECT_EQ(LoadOnDemandManager::instance()->completeLoadScopeWithDialog(nullptr, "loading", 1), 0);
    EXPECT_THAT(host.calls, ElementsAre("complete load none flag=1: loading"));
}

TEST_F(RecordingHostServices, CountsTheFaultBrackets) {
    OQ_disableSE();
    EXPECT_EQ(host.places.disabledFaults, 1);
    OQ_enableSE();
    EXPECT_EQ(host.places.disabledFaults, 0);
}

TEST(RecordingHostLife, StartsAfreshEachTime) {
    {
        RecordingHost host;
        host.addProject();
        isOk2All = reloadForDupId = true;
        notifyUser("x", messageLevelDefault);
    }
    EXPECT_FALSE(isOk2All || reloadForDupId);
    EXPECT_THROW(RecordingHost::current(), std::logic_error);
    const RecordingHost host;
    EXPECT_TRUE(host.calls.empty());
    EXPECT_EQ(host.model.activeProject, nullptr);
}

TEST(RecordingHostText, MatchesReplacesAndSplits) {
    SPStringList found;
    EXPECT_NE(SPString("Pump 1.4").m("([0-9]+)\\.([0-9]+)", found, ""), 0);
    EXPECT_EQ(found.count(), 3);
    EXPECT_EQ(found[2].str(), "4");
    SPString text("a$b");
    EXPECT_EQ(text.s("[\\]\\$temp", "x"), 0);
    EXPECT_EQ(text.s("b", "\\$1"), 1);
    EXPECT_EQ(text.str(), "a$$1");
    EXPECT_EQ(found.split("a, b", ", *"), 2);
}

class EmptyFacade final : public IBaseCMFacade {
  public:
    CString getTheDefaultHeader() override { return {}; }
    void RefreshCMStatus() override {}
};

TEST(RecordingHostLife, LetsAFacadeBeMadeWithoutAHost) { EXPECT_EQ(EmptyFacade().getTheDefaultHeader(), ""); }

} // namespace
