// Tests adding to the archive with one command per unit.
#include "CM/CMSupport/command/CMAddMember.h"

#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <utility>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AddMember : public CheckOutFixture {
  protected:
    AddMember() { setToolProperty(IPN::CMAddMember, "add $Unit"); }
    int add(CMUnitList units, bool hybrid = false) { return CMAddMember()(units, args, diags, hybrid); }
};

TEST_F(AddMember, MarksSavesAndThenAddsEachUnitWithItsHeaderAndMode) {
    EXPECT_EQ(add(list(&host.addUnit("Pump"), nullptr, &host.addUnit("Valve"))), 1);
    EXPECT_THAT(calls(), ElementsAre("set modified Pump value=1 notify=1", "set modified Valve value=1 notify=1",
                                     "save model", "run add Pump.ocl", "update header Pump 1", "update mode Pump ",
                                     "run add Valve.ocl", "update header Valve 1", "update mode Valve "));
    expectNothingIsLeft();
}

TEST_F(AddMember, WritesNoLogLine) {
    add(list(&host.addUnit("Pump")));
    EXPECT_THAT(host.logLines, IsEmpty());
}

TEST_F(AddMember, WithoutASaveCallbackMarksNothing) {
    CMFacade::saveCallbackFunc() = nullptr;
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(add(list(&pump)), 1);
    EXPECT_FALSE(pump.modified);
    EXPECT_THAT(host.callsOf("set modified"), IsEmpty());
}

TEST_F(AddMember, AnEmptyListSavesNothingAndGivesZero) {
    EXPECT_EQ(add(list()), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AddMember, TheSameUnitTwiceIsAddedTwice) {
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(add(list(&pump, &pump)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Pump.ocl", "add Pump.ocl"));
}

TEST_F(AddMember, WithoutAToolGivesOneDiagnosticAndSavesNothing) {
    host.setTool("None");
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AddMember, IfTheProjectIsGoneBehindTheToolCheckRunsNothing) {
    auto &pump = host.addUnit("Pump");
    ClosingConfiguration closing;
    ICodeGenConfigInfo *const before = std::exchange(project().configuration, &closing);
    EXPECT_EQ(add(list(&pump)), 0);
    project().configuration = before;
    EXPECT_THAT(calls(), ElementsAre("set modified Pump value=1 notify=1", "save model"));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddMember, AMissingNameOfTheToolCountsAsAnEmptyOneAndNotAsNone) {
    host.setToolDefault("", "CheckOutCheckInDirectoryOnceDuringAddToArchive", "True");
    setToolProperty("CheckOut", "co");
    setToolProperty("CheckIn", "ci");
    ASSERT_EQ(project().findProperty(IPN::CM, "General", "CMTool", IProperty::inherited), nullptr);
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co", "ci"));
}

TEST_F(AddMember, AsksForTheToolAndExpandsWithoutTheHybridFlag) {
    useProvider();
    host.setToolDefault("SCC", IPN::CMAddMember, "add $Unit");
    host.setToolDefault("Basalt", IPN::CMAddMember, "hybrid $Unit");
    host.setToolDefault("SCC", "AddMember_ControlledFile", "add -binary $Unit");
    EXPECT_EQ(add(list(&host.addUnit("Pump"), &host.addEmbeddedFile("Notes.doc")), true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Pump.ocl", "add -binary Notes.doc"));
    host.setTool("None");
    EXPECT_EQ(add(list(&host.addUnit("Valve")), true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(AddMember, TheCallersArgumentsComeBeforeItsOwn) {
    setToolProperty(IPN::CMAddMember, "add $extra $UnitPath $archive");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    ExtraArgument extra;
    args.AddTail(&extra);
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(add(list(&pump)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add x " + pump.getFullFileName().str() + " /archives/plant"));
    EXPECT_EQ(args.GetCount(), 1);
    args.RemoveAll();
}

TEST_F(AddMember, AFailedExpansionSkipsTheRunAndOnlyTheLastUnitDecides) {
    setToolProperty(IPN::CMAddMember, "add $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true};
    args.AddTail(&extra);
    EXPECT_EQ(add(list(&host.addUnit("Pump"), &host.addUnit("Valve"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add x Valve.ocl"));
    EXPECT_THAT(host.callsOf("update header Pump"), IsEmpty());
    extra.answers = {false, true, true, false};
    EXPECT_EQ(add(list(&host.addUnit("Tank"), &host.addUnit("Pipe"))), 0);
    args.RemoveAll();
}

TEST_F(AddMember, AFailedRunLeavesHeaderAndModeAlone) {
    breakExecute();
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 0);
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddMember, AToolThatPrintsAnErrorCountsAsAGoodRun) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{}, {"no such file\n"}, 0}; };
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.calls, Contains("update header Pump 1"));
}

TEST_F(AddMember, SelectsTheUnitsArchive) {
    setToolProperty(IPN::CMAddMember, "add $archive");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "File");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    add(list(&pump));
    EXPECT_THAT(host.worker.commands, ElementsAre("add /archives/pump"));
}

TEST_F(AddMember, TheProjectFileIsCopiedForTheToolAndCommitted) {
    useOldLayout();
    std::string seen;
    host.worker.run = [&](const CString &) {
        seen = read(scratch / "Plant.ory"); // the guard has put it where the tool works
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(add(list(&project())), 1);
    EXPECT_EQ(seen, "old");
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
}

TEST_F(AddMember, ExpandsBeforeTheProjectFileIsCopied) {
    class CopyArgument : public CMArgument {
      public:
        explicit CopyArgument(std::filesystem::path copy) : copy_(std::move(copy)) {}
        int isNamed(const CString &name) const override { return name == "copy" ? 1 : 0; }
        CString substitute(const CString & /*name*/) override { return exists(copy_) ? "there" : "not there"; }

      private:
        std::filesystem::path copy_;
    } copy(scratch / "Plant.ory");
    useOldLayout();
    setToolProperty(IPN::CMAddMember, "add $copy");
    args.AddTail(&copy);
    add(list(&project()));
    EXPECT_THAT(host.worker.commands, ElementsAre("add not there"));
    args.RemoveAll();
}

TEST_F(AddMember, HeaderAndModeAreReadFromTheProjectFileThatTheToolLeft) {
    useOldLayout();
    host.worker.run = [&](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    std::vector<std::string> seen;
    project().onUpdateHeader = [&](auto &) { seen.push_back(read(unitsDirectory() / "Plant.ory")); };
    project().onUpdateMode = [&](auto &, const CString &) {
        seen.push_back(read(unitsDirectory() / "Plant.ory"));
    };
    add(list(&project()));
    EXPECT_THAT(seen, ElementsAre("new", "new"));
}

TEST_F(AddMember, TheProjectFileIsRolledBackIfTheExpansionFails) {
    useOldLayout();
    setToolProperty(IPN::CMAddMember, "add $nothing");
    EXPECT_EQ(add(list(&project())), 0);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    EXPECT_FALSE(std::filesystem::exists(scratch / "Plant.ory"));
}

TEST_F(AddMember, AnEmbeddedFileHasATemplateOfItsOwn) {
    setToolProperty("AddMember_ControlledFile", "add -binary $Unit");
    EXPECT_EQ(add(list(&host.addEmbeddedFile("Notes.doc"), &host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add -binary Notes.doc", "add Pump.ocl"));
}

TEST_F(AddMember, AnEmbeddedFileTakesTheOrdinaryTemplateIfItsOwnIsMissingOrEmpty) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    EXPECT_EQ(add(list(&notes)), 1);
    setToolProperty("AddMember_ControlledFile", "");
    EXPECT_EQ(add(list(&notes)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Notes.doc", "add Notes.doc"));
}

class AddMemberInTheOldLayout : public AddMember {
  protected:
    AddMemberInTheOldLayout() { useOldLayout(); }
    recording::Class &unitIn(const CString &name, const CString &directory) {
        auto &unit = host.addUnit(name);
        unit.directory = directory;
        return unit;
    }
    [[nodiscard]] CString working() const { return scratch.string(); }
    [[nodiscard]] CString message(const IUnit &unit) const {
        return resources::format(resources::Text::unitOutsideWorkingDirectory,
                                 {unit.getFileName(), working(), "Class", unit.getName()});
    }
};

TEST_F(AddMemberInTheOldLayout, AUnitOutsideTheWorkingDirectoryIsToldAndLeftOut) {
    auto &pump = unitIn("Pump", "/elsewhere");
    EXPECT_EQ(add(list(&pump, &unitIn("Valve", working()))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Valve.ocl"));
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, message(pump));
    EXPECT_EQ(host.messages.shown[0].flags, 48U);
    EXPECT_EQ(host.messages.shown[0].level, 2);
    EXPECT_EQ(host.window.text(), message(pump).str() + "\n");
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddMemberInTheOldLayout, ADirectoryThatDiffersInCaseAloneIsOutside) {
    CString other = working();
    other.MakeUpper();
    ASSERT_NE(other, working());
    EXPECT_EQ(add(list(&unitIn("Pump", other))), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(host.messages.shown.size(), 1U);
}

TEST_F(AddMemberInTheOldLayout, ALeftOutUnitLeavesTheResultAsItWas) {
    EXPECT_EQ(add(list(&unitIn("Pump", "/elsewhere"))), 0);
    EXPECT_EQ(add(list(&unitIn("Valve", working()), &unitIn("Tank", "/elsewhere"))), 1);
}

TEST_F(AddMemberInTheOldLayout, ALeftOutUnitIsToldInABoxAloneWithoutAStream) {
    auto &pump = unitIn("Pump", "/elsewhere");
    host.window.hasStream = false;
    add(list(&pump));
    host.window.managerExists = false;
    add(list(&pump));
    EXPECT_EQ(host.messages.shown.size(), 2U);
    EXPECT_EQ(host.window.text(), "");
}

TEST_F(AddMemberInTheOldLayout, AProjectIsExemptFromTheCheck) {
    project().directory = unitsDirectory().string(); // which is not where the tool works
    EXPECT_EQ(add(list(&project())), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Plant.ory"));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(AddMemberInTheOldLayout, TheArchiveIsSelectedForALeftOutUnitToo) {
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "File");
    auto &pump = unitIn("Pump", "/elsewhere");
    pump.batchArchive = "/archives/pump";
    add(list(&pump));
    CString archive;
    CMProperty::getToolPropertyValue(IPN::CMArchive, archive, false);
    EXPECT_EQ(archive, "/archives/pump");
}

TEST_F(AddMember, InTheNewLayoutAUnitMayStandAnywhere) {
    auto &pump = host.addUnit("Pump");
    pump.directory = "/elsewhere";
    EXPECT_EQ(add(list(&pump)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Pump.ocl"));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

} // namespace
