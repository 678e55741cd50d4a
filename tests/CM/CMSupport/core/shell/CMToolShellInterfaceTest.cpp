#include "CM/CMSupport/core/CMToolShellInterface.h"

#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "CM/host/RunThread.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"
#include "tests/CM/CMSupport/core/shared/FlushedText.h"

#include <array>
#include <iterator>
#include <stdexcept>

using resources::Text;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class Execute : public CoreFixture {
  protected:
    int execute(const CString &command) {
        return theCMToolShellInterface()->Execute(command, output, error, "/nowhere");
    }
    void toolPrints(const std::vector<CString> &outputLines, const std::vector<CString> &errorLines = {},
                    int status = 0) {
        host.worker.run = [=](const CString & /*command*/) {
            return recording::ToolRun{outputLines, errorLines, status};
        };
    }
    [[nodiscard]] std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        for (const auto &message : host.messages.shown) {
            texts.push_back(message.text.str());
        }
        return texts;
    }
    CString output;
    CString error;
};

TEST_F(Execute, RunsInTheWorkingDirectoryWhateverTheCallerPasses) {
    std::filesystem::path during;
    host.worker.run = [&](const CString & /*command*/) {
        during = std::filesystem::current_path();
        return recording::ToolRun{};
    };
    const auto before = std::filesystem::current_path();
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(during, unitsDirectory());
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(Execute, RunsInTheDirectoryOfTheProjectFileInTheOldLayout) {
    setOldLayout();
    std::filesystem::path during;
    host.worker.run = [&](const CString & /*command*/) {
        during = std::filesystem::current_path();
        return recording::ToolRun{};
    };
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(during, scratch);
}

TEST_F(Execute, FallsBackToTheUnitsDirectoryIfTheWorkingDirectoryIsEmpty) {
    setOldLayout();
    project().projectFileDirectory = "";
    std::filesystem::path during;
    host.worker.run = [&](const CString & /*command*/) {
        during = std::filesystem::current_path();
        return recording::ToolRun{};
    };
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(during, unitsDirectory());
}

TEST_F(Execute, ShowsTheCommandThenTheOutput) {
    toolPrints({"first\n", "second\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(output, "first\nsecond\n");
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_EQ(shown.str(), "co Pump\nfirst\nsecond\n");
}

TEST_F(Execute, AppendsToWhatTheCallersTextsHold) {
    toolPrints({"new\n"});
    output = "old\n";
    execute("co Pump");
    EXPECT_EQ(output, "old\nnew\n");

    toolPrints({}, {"locked\n"});
    error = "of the last command\n";
    execute("co Pump");
    EXPECT_EQ(error, "of the last command\nlocked\n");
}

TEST_F(Execute, GivesOneForAToolThatFailed) {
    toolPrints({}, {"co: no such file\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(error, "co: no such file\n");
}

TEST_F(Execute, DropsTheOutputOfAToolThatPrintsOnBothChannelsAndShowsItsErrorsTwice) {
    toolPrints({"half done\n"}, {"co: ", "locked\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_EQ(error, "co: locked\n");
    EXPECT_EQ(shown.str(), "co Pump\nco: locked\nco: locked\n");
}

TEST_F(Execute, RunsNoPatternOnAToolThatPrintsNothing) {
    setToolProperty("OperationErrorPattern", ".*");
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, ShowsABoxForAnErrorPatternInGoodOutputAndStillGivesOne) {
    setToolProperty("OperationErrorPattern", "not LOCKED");
    toolPrints({"Pump is Not locked\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::commandReportedError));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_EQ(host.messages.shown[0].level, 2);
}

TEST_F(Execute, ShowsOnlyTheErrorBoxIfBothPatternsMatch) {
    setToolProperty("OperationErrorPattern", "locked");
    setToolProperty("OperationWarningPattern", "Pump");
    toolPrints({"Pump is locked\n"});
    execute("co Pump");
    EXPECT_THAT(messages(), ElementsAre(resources::text(Text::commandReportedError)));
}

TEST_F(Execute, ShowsAWarningBoxIfOnlyTheWarningPatternMatches) {
    setToolProperty("OperationErrorPattern", "never");
    setToolProperty("OperationWarningPattern", "PUMP");
    toolPrints({"Pump is locked\n"});
    execute("co Pump");
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::commandReportedWarning));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONEXCLAMATION);
    EXPECT_EQ(host.messages.shown[0].level, 2);
}

TEST_F(Execute, TestsNoPatternThatIsEmpty) {
    setToolProperty("OperationErrorPattern", "");
    setToolProperty("OperationWarningPattern", "");
    toolPrints({"anything\n"});
    execute("co Pump");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, WithoutAStreamTestsThePatternsOnlyAfterAFailure) {
    getMainCMOutputer()() = nullptr;
    setToolProperty("OperationErrorPattern", "locked");
    toolPrints({"locked\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(output, "locked\n");
    EXPECT_THAT(host.messages.shown, IsEmpty());

    toolPrints({}, {"locked\n"});
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_THAT(messages(), ElementsAre(resources::text(Text::commandReportedError)));
}

TEST_F(Execute, StartsNothingForAnEmptyCommand) {
    traceOn();
    EXPECT_EQ(execute(""), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(shown.str(), EndsWith("+++ no command to execute\n"));
}

TEST_F(Execute, TracesTheOutput) {
    traceOn();
    toolPrints({"done\n"});
    execute("co Pump");
    EXPECT_THAT(shown.str(), HasSubstr("done\n+++ command output: done\n\n"));
}

TEST_F(Execute, ReportsAWorkingDirectoryThatItCannotEnter) {
    project().directory = "/no/such/directory";
    const auto before = std::filesystem::current_path();
    EXPECT_EQ(execute("co Pump"), 0);
    EXPECT_THAT(error.str(), HasSubstr("/no/such/directory"));
    EXPECT_THAT(error.str(), HasSubstr(host.places.errorCodeText.str()));
    EXPECT_EQ(shown.str(), error.str());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(Execute, TakesAPercentSignInADirectoryForNoFormat) {
    project().directory = "/no/%s%n/directory";
    EXPECT_EQ(execute("co Pump"), 0);
    EXPECT_THAT(error.str(), HasSubstr("/no/%s%n/directory"));
}

TEST_F(Execute, ReportsAnUnknownCurrentDirectory) {
    host.places.fullPathError = "the current directory is gone";
    EXPECT_EQ(execute("co Pump"), 0);
    EXPECT_EQ(error, "the current directory is gone");
    EXPECT_EQ(shown.str(), "the current directory is gone");
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(Execute, ReportsADirectoryThatItCannotGoBackTo) {
    host.places.currentDirectory = "/no/way/back";
    toolPrints({"done\n"});
    EXPECT_EQ(execute("co Pump"), 0);
    EXPECT_EQ(output, "done\n");
    EXPECT_THAT(error.str(), HasSubstr("/no/way/back"));
    EXPECT_THAT(shown.str(), EndsWith(error.str()));
}

TEST_F(Execute, PutsTheMessageInThePlaceOfTheToolsErrorsIfItCannotGoBack) {
    host.places.currentDirectory = "/no/way/back";
    toolPrints({}, {"co: locked\n"});
    EXPECT_EQ(execute("co Pump"), 0);
    EXPECT_THAT(error.str(), HasSubstr("/no/way/back"));
    EXPECT_THAT(error.str(), Not(HasSubstr("locked")));
    EXPECT_THAT(shown.str(), HasSubstr("co: locked\n"));
}

TEST_F(Execute, GoesBackToADirectoryWithABackslashInItsName) {
    const auto odd = scratch / "back\\slash";
    std::filesystem::create_directory(odd);
    std::filesystem::current_path(odd);
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(std::filesystem::current_path(), odd);
}

TEST_F(Execute, GoesBackToTheDirectoryIfTheWorkerThrows) {
    host.worker.run = [](const CString & /*command*/) -> recording::ToolRun {
        throw std::runtime_error("no more processes");
    };
    const auto before = std::filesystem::current_path();
    EXPECT_THROW(execute("co Pump"), std::runtime_error);
    EXPECT_EQ(std::filesystem::current_path(), before);
}

// What the window shows at once.

class FlushedOutput : public Execute {
  protected:
    /// Keeps what is visible when a box is shown.
    void watchBox() {
        host.messages.onShow = [this] { atTheBox = buffer_.flushed(); };
    }
    [[nodiscard]] const std::string &flushed() const { return buffer_.flushed(); }
    std::string atTheBox;

  private:
    FlushedText buffer_{shown};
};

TEST_F(FlushedOutput, HoldsTheCommandBeforeTheToolStarts) {
    std::string duringTheRun;
    host.worker.run = [&](const CString & /*command*/) {
        duringTheRun = flushed();
        return recording::ToolRun{};
    };
    execute("co Pump");
    EXPECT_EQ(duringTheRun, "co Pump\n");
}

TEST_F(FlushedOutput, HoldsTheOutputBeforeItsPatternsAreTested) {
    setToolProperty("OperationErrorPattern", "locked");
    toolPrints({"locked"});
    watchBox();
    execute("co Pump");
    EXPECT_EQ(atTheBox, "co Pump\nlocked");
}

TEST_F(FlushedOutput, HoldsTheErrorsBeforeTheirPatternsAreTested) {
    setToolProperty("OperationErrorPattern", "locked");
    toolPrints({}, {"locked"});
    watchBox();
    execute("co Pump");
    EXPECT_EQ(atTheBox, "co Pump\nlockedlocked");
}

TEST_F(FlushedOutput, HoldsTheReportOfATimeOut) {
    toolPrints({}, {}, WAIT_TIMEOUT);
    execute("co Pump");
    EXPECT_EQ(flushed(), std::string("co Pump\n") + resources::text(Text::commandTimedOut));
}

TEST_F(FlushedOutput, HoldsThatTheCurrentDirectoryIsUnknown) {
    host.places.fullPathError = "the current directory is gone";
    execute("co Pump");
    EXPECT_EQ(flushed(), "the current directory is gone");
}

// The redirection.

TEST_F(Execute, CutsACommandAtItsFirstGreaterSignAndKeepsTheBlanksAboutIt) {
    toolPrints({"the text\n"});
    EXPECT_EQ(execute("co -p Pump > out.txt"), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(CString("co -p Pump ")));
    EXPECT_THAT(host.callsOf("run redirected"), ElementsAre("run redirected co -p Pump "));
    EXPECT_EQ(read(unitsDirectory() / " out.txt"), "the text\n");
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_THAT(shown.str(), StartsWith("co -p Pump > out.txt\n"));
}

TEST_F(Execute, CutsACommandAtAGreaterSignInsideAComment) {
    execute("ci -m'flow > 3 > 2' Pump");
    EXPECT_THAT(host.worker.commands, ElementsAre(CString("ci -m'flow ")));
    EXPECT_TRUE(std::filesystem::exists(unitsDirectory() / " 3 > 2' Pump"));
}

TEST_F(Execute, EmptiesTheFileThatItRedirectsTo) {
    write(unitsDirectory() / "out", "a long text of last time\n");
    toolPrints({"new\n"});
    execute("co -p Pump>out");
    EXPECT_EQ(read(unitsDirectory() / "out"), "new\n");
}

TEST_F(Execute, BringsTheOutputBackIfTheFileCannotBeOpened) {
    toolPrints({"the text\n"});
    EXPECT_EQ(execute("co -p Pump>no/such/out"), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(CString("co -p Pump")));
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_EQ(output, "the text\n");
    EXPECT_EQ(shown.str(), "co -p Pump>no/such/out\nthe text\n");
}

TEST_F(Execute, ClosesTheFileThatItRedirectedTo) {
    const auto openFiles = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    std::ptrdiff_t during = 0;
    host.worker.run = [&](const CString & /*command*/) {
        during = openFiles();
        return recording::ToolRun{};
    };
    const auto before = openFiles();
    execute("co -p Pump>out");
    EXPECT_EQ(during, before + 1);
    EXPECT_EQ(openFiles(), before);
}

// The limit.

TEST_F(Execute, WaitsAsLongAsTheLimitSays) {
    setToolProperty(IPN::CMChildThreadTimeOut, " 2500ms");
    execute("co Pump");
    EXPECT_THAT(host.callsOf("wait"), ElementsAre("wait 2500"));
}

class UnlimitedWait : public Execute, public testing::WithParamInterface<const char *> {};

TEST_P(UnlimitedWait, ComesFrom) {
    setToolProperty(IPN::CMChildThreadTimeOut, GetParam());
    execute("co Pump");
    EXPECT_THAT(host.callsOf("wait"), ElementsAre("wait -1"));
}
std::string limitName(const testing::TestParamInfo<const char *> &row) {
    constexpr std::array names{"Words", "Zero", "Nothing", "MinusOne", "Overflow", "TwoSigns"};
    return names.at(row.index);
}
INSTANTIATE_TEST_SUITE_P(Limit, UnlimitedWait,
                         testing::Values("abc", "0", "", "-1", "99999999999999999999", "+-5"), limitName);

TEST_F(Execute, OnTheProviderRouteReadsTheLimitAndThePatternsOfTheRouteAndNotOfTheProvidersName) {
    setProviderRoute();
    CMProperty::setSCCToolName("Basalt");
    for (const CString &key :
         {IPN::CMChildThreadTimeOut, CString("OperationErrorPattern"), CString("OperationWarningPattern")}) {
        host.setToolDefault("Basalt", key, "1");
    }
    host.setToolDefault("SCC", IPN::CMChildThreadTimeOut, "250");
    toolPrints({"1"});
    execute("co Pump");
    EXPECT_THAT(host.callsOf("wait"), ElementsAre("wait 250"));
    EXPECT_THAT(messages(), ElementsAre(resources::text(Text::providerNotFound)));
    host.setToolDefault("SCC", "OperationWarningPattern", "1");
    execute("co Pump");
    EXPECT_EQ(messages().back(), resources::text(Text::commandReportedWarning));
    host.setToolDefault("SCC", "OperationErrorPattern", "1");
    execute("co Pump");
    EXPECT_EQ(messages().back(), resources::text(Text::commandReportedError));
    CMProperty::setSCCToolName("");
}

TEST_F(Execute, WaitsWithoutLimitIfNoLimitIsSet) {
    execute("co Pump");
    EXPECT_THAT(host.callsOf("wait"), ElementsAre("wait -1"));
}

TEST_F(Execute, TakesTheOutputForAnErrorIfTheTimeRanOut) {
    setToolProperty("OperationErrorPattern", "half");
    toolPrints({"half ", "done\n"}, {}, WAIT_TIMEOUT);
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_EQ(error, "half done\n");
    EXPECT_EQ(shown.str(), "co Pump\nhalf done\n");
    EXPECT_THAT(messages(), ElementsAre(resources::text(Text::commandReportedError)));
}

TEST_F(Execute, ReportsATimeOutWithoutAnyText) {
    toolPrints({}, {}, WAIT_TIMEOUT);
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_EQ(shown.str(), std::string("co Pump\n") + resources::text(Text::commandTimedOut));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, ReportsNoTimeOutIfTheCallersTextsHeldSomethingBefore) {
    host.setSetting("ShowMessageOnCMCommandTimeout", "TRUE");
    toolPrints({}, {}, WAIT_TIMEOUT);
    output = "of the last command\n";
    EXPECT_EQ(execute("co Pump"), 1);
    output = "";
    error = "of the last command\n";
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_THAT(shown.str(), Not(HasSubstr(resources::text(Text::commandTimedOut))));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, TakesTheErrorLinesAloneIfTheTimeRanOut) {
    host.setSetting("ShowMessageOnCMCommandTimeout", "TRUE");
    toolPrints({"half done\n"}, {"co: waiting\n"}, WAIT_TIMEOUT);
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_EQ(error, "co: waiting\n");
    EXPECT_EQ(shown.str(), "co Pump\nco: waiting\nco: waiting\n");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, ShowsATimeOutInABoxAlsoWithoutAStream) {
    getMainCMOutputer()() = nullptr;
    host.setSetting("ShowMessageOnCMCommandTimeout", "TRUE");
    toolPrints({}, {}, WAIT_TIMEOUT);
    EXPECT_EQ(execute("co Pump"), 1);
    EXPECT_THAT(messages(), ElementsAre(resources::text(Text::commandTimedOut)));
}

TEST_F(Execute, TracesATimeOut) {
    traceOn();
    toolPrints({}, {}, WAIT_TIMEOUT);
    execute("co Pump");
    EXPECT_THAT(shown.str(), EndsWith(std::string("+++ ") + resources::text(Text::commandTimedOut)));
}

TEST_F(Execute, ShowsATimeOutInABoxIfTheSettingSaysSoInAnyCase) {
    host.setSetting("ShowMessageOnCMCommandTimeout", "true");
    toolPrints({}, {}, WAIT_TIMEOUT);
    execute("co Pump");
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::commandTimedOut));
    EXPECT_FALSE(host.messages.shown[0].question);
    EXPECT_EQ(host.messages.shown[0].level, 2);
}

TEST_F(Execute, ShowsNoBoxForATimeOutIfTheSettingSaysOtherwise) {
    host.setSetting("ShowMessageOnCMCommandTimeout", "Yes");
    toolPrints({}, {}, WAIT_TIMEOUT);
    execute("co Pump");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, ReportsNoTimeOutOfAVersionGraph) {
    host.setSetting("ShowMessageOnCMCommandTimeout", "TRUE");
    toolPrints({}, {}, WAIT_TIMEOUT);
    EXPECT_EQ(execute("cm lsrevs -graph Pump"), 1);
    EXPECT_EQ(shown.str(), "cm lsrevs -graph Pump\n");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Execute, DeletesTheWorkerBeforeThePatternsAreTested) {
    setToolProperty("OperationErrorPattern", "x");
    toolPrints({"x"});
    int alive = -1;
    host.messages.onShow = [&] { alive = host.worker.alive; };
    execute("co Pump");
    EXPECT_EQ(alive, 0);
}

TEST_F(Execute, BringsMegabytesOfOutputBack) {
    toolPrints(std::vector<CString>(200000, CString("0123456789012345678\n")));
    EXPECT_EQ(execute("log Pump"), 1);
    EXPECT_EQ(output.GetLength(), 4000000);
}

TEST_F(Execute, IsReachedThroughOneObject) {
    ASSERT_NE(theCMToolShellInterface(), nullptr);
    EXPECT_EQ(theCMToolShellInterface(), theCMToolShellInterface());
}

} // namespace
