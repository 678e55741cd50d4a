#include "CM/CMSupport/command/CMListWorkspace.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ListWorkspace : public CheckOutFixture {
  protected:
    ListWorkspace() { host.model.repositoryFiles.RemoveAll(); }
    std::vector<IUnit *> listed() {
        CMUnitList units;
        EXPECT_EQ(CMListWorkspace()(units, args, diags, false), 1);
        return entries(units);
    }
};

TEST_F(ListWorkspace, HoldsTheFilesOfTheModelInTheirOrder) {
    auto &pump = host.addUnit("Pump");
    auto &cooling = host.addSubsystem("Cooling");
    auto &notes = host.addEmbeddedFile("Notes.doc", &pump);
    auto &code = host.addFile("main");
    EXPECT_THAT(listed(), ElementsAre(&pump, &cooling, &notes, &code));
}

TEST_F(ListWorkspace, LeavesReferencesOut) {
    auto &pump = host.addUnit("Pump");
    host.addUnit("Valve").reference = true;
    EXPECT_THAT(listed(), ElementsAre(&pump));
}

TEST_F(ListWorkspace, HoldsTheProjectItself) {
    host.model.repositoryFiles.AddTail(&project());
    host.addUnit("Valve").reference = true;
    EXPECT_THAT(listed(), ElementsAre(&project()));
}

TEST_F(ListWorkspace, LeavesAProjectThatIsAReferenceOut) {
    host.model.repositoryFiles.AddTail(&project());
    project().reference = true;
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(ListWorkspace, LeavesEmbeddedFilesOfAReferenceOut) {
    auto &pump = host.addUnit("Pump");
    auto &notes = host.addEmbeddedFile("Notes.doc", &pump);
    notes.saveUnit = false; // it is held by the pump's file
    ASSERT_EQ(notes.getSaveUnit(), &pump);
    EXPECT_THAT(listed(), ElementsAre(&pump, &notes));
    pump.reference = true;
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(ListWorkspace, KeepsAnEmbeddedFileThatNoUnitHolds) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    notes.saveUnit = false;
    notes.owner = nullptr;
    ASSERT_EQ(notes.getSaveUnit(), nullptr);
    EXPECT_THAT(listed(), ElementsAre(&notes));
}

TEST_F(ListWorkspace, KeepsAnOrdinaryUnitOfAReference) {
    auto &cooling = host.addSubsystem("Cooling");
    cooling.reference = true;
    auto &pump = host.addUnit("Pump", &cooling);
    EXPECT_THAT(listed(), ElementsAre(&pump));
}

TEST_F(ListWorkspace, LeavesTheWorkspaceOut) {
    host.model.repositoryFiles.AddTail(host.model.workspace);
    auto &pump = host.addUnit("Pump");
    EXPECT_THAT(listed(), ElementsAre(&pump));
}

TEST_F(ListWorkspace, LeavesHiddenSubsystemsOut) {
    host.addSubsystem("Internal").hiddenFromCM = true;
    auto &cooling = host.addSubsystem("Cooling");
    EXPECT_THAT(listed(), ElementsAre(&cooling));
}

TEST_F(ListWorkspace, OfAHostWithoutAListOfFilesIsEmpty) {
    auto units = list(&host.addUnit("Pump"));
    host.model.hasRepositoryFiles = false;
    EXPECT_EQ(CMListWorkspace()(units, args, diags, false), 1);
    EXPECT_THAT(entries(units), IsEmpty());
}

TEST_F(ListWorkspace, EmptiesTheListFirst) {
    auto &pump = host.addUnit("Pump");
    auto units = list(&pump, &pump, &pump);
    EXPECT_EQ(CMListWorkspace()(units, args, diags, true), 1);
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(ListWorkspace, RunsNothingAndAsksForNoTool) {
    host.setTool("None");
    host.addUnit("Pump");
    host.lookups.clear();
    EXPECT_EQ(listed().size(), 1U);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_THAT(host.lookups, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

} // namespace
