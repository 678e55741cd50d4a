#include "CM/CMSupport/command/CMConnectToCMRepository.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <optional>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

class ConnectToRepository : public CheckOutFixture {
  protected:
    ConnectToRepository() {
        setToolProperty(IPN::CMConnectToCMRepository, "connect");
        setToolProperty("HeaderInfoItsRepositoryPath", "repository(.*)");
        setToolProperty("Repository", "$ArchivePath$SubDirs");
        setToolProperty("ArchiveRoot", "root:$ArchivePath");
        setToolProperty("PostConnectToCMRepository", "");
        setToolProperty(IPN::CMArchive, "/archives/plant");
    }
    int connect(CMUnitList units = CMUnitList()) { return CMConnectToCMRepository()(units, args, diags); }
    void toolPrints(const CString &line) {
        host.worker.run = [line](const CString &) { return recording::ToolRun{{line}, {}, 0}; };
    }
    /// A property that was set on the project itself, or nothing.
    [[nodiscard]] std::optional<std::string> own(const CString &key) {
        const auto &properties = project().properties;
        const auto found = properties.find({IPN::CM, "RCS", key});
        return found == properties.end() ? std::nullopt : std::optional(found->second->getValue().str());
    }
    std::string read(const CString &key) {
        CString value = "unset";
        CMProperty::getToolPropertyValue(key, value, false);
        return value.str();
    }
};

TEST_F(ConnectToRepository, RunsTheCommandAndWritesThePathIntoBothProperties) {
    toolPrints("repository /vault/plant");
    EXPECT_EQ(connect(), 1);
    const std::string log = "log 4 ../CM/CMSupport/ConnectToCMRepository: ";
    EXPECT_THAT(host.callsOf("log "),
                ElementsAre(log + "Executing the following command to connect to archive: connect",
                            log + "Connect to archive command returned the following: repository /vault/plant"));
    EXPECT_THAT(host.worker.commands, ElementsAre("connect"));
    EXPECT_EQ(own("Repository"), "/vault/plant$SubDirs");
    EXPECT_EQ(own("ArchiveRoot"), "root:/vault/plant");
    expectNothingIsLeft();
}

TEST_F(ConnectToRepository, RunsTheSecondCommandWithThePathInPlace) {
    setToolProperty("PostConnectToCMRepository", "checkout $ArchiveRoot");
    toolPrints("repository /vault/plant");
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("connect", "checkout root:/vault/plant"));
    ASSERT_THAT(logTexts(), SizeIs(4));
    EXPECT_EQ(logTexts()[2], "Executing the following command to perform post connect to archive operations: "
                             "checkout root:/vault/plant");
    EXPECT_EQ(logTexts()[3], "Post connect to archive command returned the following: repository /vault/plant")
        << "without the first command's output in front";
}

TEST_F(ConnectToRepository, TheSecondRunStartsWithoutTheErrorsOfTheFirst) {
    setToolProperty("PostConnectToCMRepository", "checkout");
    int runs = 0;
    host.worker.run = [&runs](const CString &) {
        return recording::ToolRun{{}, {++runs == 1 ? "first\n" : "second\n"}, 0};
    };
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(shown.str(), HasSubstr("checkout\nsecond\nsecond\n"));
    EXPECT_THAT(shown.str(), Not(HasSubstr("first\nsecond\n")));
}

TEST_F(ConnectToRepository, TakesAnEqualsSignAndBlanksOffThePath) {
    const char *const printed[] = {"repository = /v/p \t\n", "repository=/v/p", "repository /v/p",
                                   "repository =\t/v/p"};
    setToolProperty("HeaderInfoItsRepositoryPath", "(?s)repository(.*)");
    for (const char *line : printed) {
        project().properties.clear();
        toolPrints(line);
        EXPECT_EQ(connect(), 1);
        EXPECT_EQ(own("ArchiveRoot"), "root:/v/p") << line;
    }
}

TEST_F(ConnectToRepository, TakesOneEqualsSignOnly) {
    toolPrints("repository = =/v");
    connect();
    EXPECT_EQ(own("ArchiveRoot"), "root:=/v");
}

TEST_F(ConnectToRepository, ReplacesEveryPlaceholder) {
    setToolProperty("Repository", "$ArchivePath|$ArchivePath");
    toolPrints("repository /v");
    connect();
    EXPECT_EQ(own("Repository"), "/v|/v");
}

TEST_F(ConnectToRepository, AValueWithoutThePlaceholderIsWrittenBackAsItWas) {
    setToolProperty("Repository", "/fixed");
    toolPrints("repository /v");
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(own("Repository"), "/fixed");
    EXPECT_EQ(own("ArchiveRoot"), "root:/v");
}

TEST_F(ConnectToRepository, ASecondConnectChangesNothing) {
    toolPrints("repository /v");
    connect();
    toolPrints("repository /other");
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(own("Repository"), "/v$SubDirs");
}

TEST_F(ConnectToRepository, WithoutAMatchThePlaceholderBecomesNothing) {
    toolPrints("who knows");
    EXPECT_EQ(connect(), 1) << "the extraction's 0 is overwritten";
    EXPECT_EQ(own("Repository"), "$SubDirs");
    EXPECT_EQ(own("ArchiveRoot"), "root:");
}

TEST_F(ConnectToRepository, WithAnEmptyPatternThePropertiesStay) {
    setToolProperty("HeaderInfoItsRepositoryPath", "");
    toolPrints("repository /v");
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(own("Repository"), std::nullopt);
    EXPECT_EQ(own("ArchiveRoot"), std::nullopt);
}

/// Uses a tool without properties other than those that a test sets.
class ConnectWithBareTool : public CheckOutFixture {
  protected:
    ConnectWithBareTool() {
        host.setTool("Bare");
        host.setToolDefault("Bare", IPN::CMConnectToCMRepository, "connect");
        host.worker.run = [](const CString &) { return recording::ToolRun{{"repository /v"}, {}, 0}; };
    }
    int connect() {
        CMUnitList units;
        return CMConnectToCMRepository()(units, args, diags);
    }
};

TEST_F(ConnectWithBareTool, WithoutAPatternThePropertiesStay) {
    host.setToolDefault("Bare", "Repository", "$ArchivePath");
    host.setToolDefault("Bare", "PostConnectToCMRepository", "");
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(project().properties, IsEmpty());
}

TEST_F(ConnectWithBareTool, WithoutTheTwoPropertiesNothingIsWrittenAndTheSecondCommandRuns) {
    host.setToolDefault("Bare", "HeaderInfoItsRepositoryPath", "repository (.*)");
    host.setToolDefault("Bare", "PostConnectToCMRepository", "after");
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(project().properties, IsEmpty());
    EXPECT_THAT(host.worker.commands, ElementsAre("connect", "after"));
}

TEST_F(ConnectWithBareTool, WithoutTheFirstPropertyTheSecondIsWritten) {
    host.setToolDefault("Bare", "HeaderInfoItsRepositoryPath", "repository (.*)");
    host.setToolDefault("Bare", "ArchiveRoot", "$ArchivePath");
    host.setToolDefault("Bare", "PostConnectToCMRepository", "");
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(project().properties, SizeIs(1));
    CString root;
    CMProperty::getToolPropertyValue("ArchiveRoot", root, false);
    EXPECT_EQ(root, "/v");
}

TEST_F(ConnectWithBareTool, WithoutASecondTemplateTheConnectIsReportedAsFailedThoughThePathIsWritten) {
    host.setToolDefault("Bare", "HeaderInfoItsRepositoryPath", "repository (.*)");
    host.setToolDefault("Bare", "Repository", "$ArchivePath");
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("connect"));
    CString repository;
    CMProperty::getToolPropertyValue("Repository", repository, false);
    EXPECT_EQ(repository, "/v");
}

TEST_F(ConnectWithBareTool, NeverTakesTheTemplatesOfTheProvidersName) {
    useProvider(); // as hybrid mode would
    for (const char *tool : {"Basalt", "SCC"}) {
        host.setToolDefault(tool, IPN::CMConnectToCMRepository, CString(tool) + " connect");
        host.setToolDefault(tool, "HeaderInfoItsRepositoryPath", "repository (.*)");
        host.setToolDefault(tool, "Repository", CString(tool) + " at $ArchivePath");
        host.setToolDefault(tool, "PostConnectToCMRepository", CString(tool) + " after");
    }
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("SCC connect", "SCC after"));
    const auto kept = project().properties.find({IPN::CM, "Bare", "Repository"});
    ASSERT_NE(kept, project().properties.end()) << "values are kept under the tool's name";
    EXPECT_EQ(kept->second->getValue(), "SCC at /v");
    host.setTool("None");
    EXPECT_EQ(connect(), 0) << "a provider is no command tool";
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(ConnectToRepository, WithoutATemplateNothingRuns) {
    host.setTool("Other");
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(ConnectToRepository, WithAnEmptyTemplateLogsTwoLinesRunsNothingAndGivesOne) {
    setToolProperty(IPN::CMConnectToCMRepository, "");
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to connect to archive: ",
                                        "Connect to archive command returned the following: "));
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(ConnectToRepository, WithATemplateThatCannotBeResolvedNothingRuns) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect $unknown");
    setToolProperty("PostConnectToCMRepository", "after");
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(own("Repository"), std::nullopt);
}

TEST_F(ConnectToRepository, AConnectThatCannotRunLeavesThePropertiesAndTheSecondCommand) {
    setToolProperty("PostConnectToCMRepository", "after");
    breakExecute();
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(logTexts(), SizeIs(2)) << "the lines of the first run";
    EXPECT_EQ(own("Repository"), std::nullopt);
    EXPECT_EQ(lookUpOf("HeaderInfoItsRepositoryPath"), -1);
    EXPECT_EQ(lookUpOf("PostConnectToCMRepository"), -1);
}

TEST_F(ConnectToRepository, ASecondCommandThatCannotRunGivesZeroAndLeavesThePropertiesWritten) {
    setToolProperty("PostConnectToCMRepository", "after");
    host.worker.run = [this](const CString &) {
        breakExecute();
        return recording::ToolRun{{"repository /v"}, {}, 0};
    };
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("connect"));
    EXPECT_EQ(own("ArchiveRoot"), "root:/v");
}

TEST_F(ConnectToRepository, ASecondTemplateThatCannotBeResolvedGivesZero) {
    setToolProperty("PostConnectToCMRepository", "after $unknown");
    toolPrints("repository /v");
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, SizeIs(1));
    EXPECT_EQ(own("ArchiveRoot"), "root:/v");
}

TEST_F(ConnectToRepository, SavesTheModelWhateverTheToolsPropertySays) {
    setToolProperty(IPN::CMSaveOnCheckOut, "False");
    connect();
    EXPECT_EQ(calls().front(), "save model");
    EXPECT_THAT(host.callsOf("save model"), SizeIs(1));
}

TEST_F(ConnectToRepository, WithoutASaveCallbackGoesOn) {
    CMFacade::saveCallbackFunc() = nullptr;
    EXPECT_EQ(connect(), 1);
}

TEST_F(ConnectToRepository, WithoutAToolGivesOneDiagnosticAndSavesNothing) {
    host.setTool("None");
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ConnectToRepository, TheArchiveOfTheCallersArgumentsIsTheOneThatIsConnected) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect $archive");
    CMArchive chosen("/archives/chosen");
    args.AddTail(&chosen);
    connect();
    EXPECT_THAT(host.worker.commands, ElementsAre("connect /archives/chosen"));
    EXPECT_EQ(args.GetCount(), 1);
    args.RemoveAll();
}

TEST_F(ConnectToRepository, PutsNoArgumentsOfItsOwnOnTheList) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect $Unit");
    EXPECT_EQ(connect(list(&host.addUnit("Pump"))), 0) << "there is no unit to expand";
    setToolProperty(IPN::CMConnectToCMRepository, "connect $archive");
    setToolProperty("archive", "the property");
    connect();
    EXPECT_THAT(host.worker.commands, ElementsAre("connect the property"));
}

TEST_F(ConnectToRepository, SelectsTheArchiveOfTheFirstUnit) {
    setToolProperty(IPN::CMArchiveSelection, "File");
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    pump.batchArchive = "/archives/pump";
    valve.batchArchive = "/archives/valve";
    connect(list(&pump, &valve));
    EXPECT_EQ(read(IPN::CMArchive), "/archives/pump");
}

TEST_F(ConnectToRepository, WithoutUnitsSelectsTheArchiveOfTheProject) {
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    project().batchArchive = "/archives/whole";
    connect();
    EXPECT_EQ(read(IPN::CMArchive), "/archives/whole");
}

TEST_F(ConnectToRepository, WithOneArchiveForTheProjectSelectsNone) {
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    connect(list(&pump));
    EXPECT_EQ(read(IPN::CMArchive), "/archives/plant");
    EXPECT_EQ(own(IPN::CMArchive), std::nullopt);
}

TEST_F(ConnectToRepository, WithoutAProjectThereIsNoTool) {
    // The component is no longer reached without a project, so the tool check ends it, or it continues and finds
    // no template.
    host.model.activeProject = nullptr;
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(ConnectToRepository, WithoutUnitsAndWithoutAProjectPassesTheSelectionOver) {
    setToolProperty(IPN::CMArchiveSelection, "File");
    // The project closes after the tool check.
    CMFacade::saveCallbackFunc() = [] { RecordingHost::current().model.activeProject = nullptr; };
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(ConnectToRepository, TracesThePath) {
    traceOn();
    toolPrints("repository = /v");
    connect();
    EXPECT_THAT(shown.str(), HasSubstr("+++ Archive Repository is: ' = /v'\n")) << "as it was captured";
}

TEST_F(ConnectToRepository, OnAnItemListDoesNothing) {
    CMArchiveItemList items;
    EXPECT_EQ(CMConnectToCMRepository()(items, args, diags), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

} // namespace
