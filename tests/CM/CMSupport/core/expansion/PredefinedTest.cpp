#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class ExpandPredefined : public ExpansionFixture {
  protected:
    std::string replaced(const CString &source) {
        status = CMProperty::ExpandPredefined(source, result, error);
        return result.str();
    }
};

TEST_F(ExpandPredefined, ReplacesEachVariable) {
    std::filesystem::current_path(scratch);
    const std::string here = scratch.string();
    host.places.root = "/opt/orchard";
    host.places.tempDir = "/var/tmp";
    EXPECT_EQ(replaced("$OQROOT/share"), "/opt/orchard/share");
    EXPECT_EQ(replaced("$projectname"), "Plant.ory");
    EXPECT_EQ(replaced("$currentdirectory"), here);
    EXPECT_EQ(replaced("$orpdirectory/x"), here + "/x");
    EXPECT_EQ(replaced("$projectunitdirname"), "Plant_ory");
    EXPECT_EQ(replaced("$temp/x"), "/var/tmp/x");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandPredefined, FindsAVariableInAnyCase) { EXPECT_EQ(replaced("$oqroot $TEMP"), "/orchard /tmp"); }

TEST_F(ExpandPredefined, ReplacesTheEscapedFormWithItsBackslash) {
    EXPECT_EQ(replaced("\\$temp/x"), "/tmp/x");
    EXPECT_EQ(replaced("\\$ProjectName"), "Plant.ory");
}

TEST_F(ExpandPredefined, ReplacesOneEscapedAndOnePlainFormOfEach) {
    EXPECT_EQ(replaced("$temp \\$temp $temp \\$temp"), "/tmp /tmp $temp \\$temp");
}

TEST_F(ExpandPredefined, DoesNotKnowVariablesInBraces) { EXPECT_EQ(replaced("${temp}"), "${temp}"); }

TEST_F(ExpandPredefined, SucceedsWhetherOrNotAnythingWasReplaced) {
    EXPECT_EQ(replaced("$nobody"), "$nobody");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandPredefined, ReturnsWhatTheRootReturnedAndReplacesTheRest) {
    host.places.root = "";
    EXPECT_EQ(replaced("$OQROOT $temp"), "$OQROOT /tmp");
    EXPECT_EQ(status, 0);
}

TEST_F(ExpandPredefined, KnowsOnlyTheRootAndTheTemporaryDirectoryWithoutAProject) {
    host.model.activeProject = nullptr;
    const char *text = "$projectname $currentdirectory $orpdirectory $projectunitdirname";
    EXPECT_EQ(replaced(text), text);
    EXPECT_EQ(replaced("$OQROOT $temp"), "/orchard /tmp");
}

TEST_F(ExpandPredefined, WantsTheProjectSingletonForItsDirectories) {
    host.model.projectIsOpen = false;
    EXPECT_EQ(replaced("$projectname $orpdirectory $projectunitdirname $currentdirectory"),
              "Plant.ory $orpdirectory $projectunitdirname $currentdirectory");
}

TEST_F(ExpandPredefined, ReplacesAVariableThatAnEarlierOneHasPutIn) {
    host.places.root = "/opt/$temp";
    EXPECT_EQ(replaced("$OQROOT"), "/opt//tmp");
    host.places.root = "/opt";
    host.places.tempDir = "$OQROOT";
    EXPECT_EQ(replaced("$temp"), "$OQROOT") << "and not one that a later one has put in";
}

TEST_F(ExpandPredefined, ReplacesTheProjectsVariablesInTheirOrder) {
    // Each value holds the next variable, so that any other order would leave one of them.
    const auto here = scratch / "$orpdirectory";
    std::filesystem::create_directory(here);
    std::filesystem::current_path(here);
    project().fileName = "$currentdirectory";
    project().projectFileDirectory = "/plant/$projectunitdirname";
    host.model.folderExtension = ".$temp";
    host.places.tempDir = "/var/tmp";
    EXPECT_EQ(replaced("$projectname"), scratch.string() + "//plant/Plant_/var/tmp");
}

TEST_F(ExpandPredefined, LeavesTheCurrentDirectoryIfThereIsNone) {
    const auto gone = scratch / "gone";
    std::filesystem::create_directory(gone);
    std::filesystem::current_path(gone);
    std::filesystem::remove(gone);
    EXPECT_EQ(replaced("$currentdirectory $temp"), "$currentdirectory /tmp");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandPredefined, ReplacesTheFirstCharacterOfTheFolderExtension) {
    host.model.folderExtension = ".rpy";
    EXPECT_EQ(replaced("$projectunitdirname"), "Plant_rpy");
    host.model.folderExtension = "";
    EXPECT_EQ(replaced("$projectunitdirname"), "Plant");
}

TEST_F(ExpandPredefined, TracesItsSource) {
    traceOn();
    replaced("\\$temp");
    EXPECT_EQ(shown.str(), "+++ Expanding (predefined?) '\\$temp'\n");
}

} // namespace
