// Tests names that no template can quote, wherever a command operation inserts a name into a command.
#include "CM/CMSupport/command/CMAddMember.h"
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMConnectToCMRepository.h"
#include "CM/CMSupport/command/CMDeleteMember.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMFetchFromArchive.h"
#include "CM/CMSupport/command/CMListArchive.h"
#include "CM/CMSupport/command/CMMoveMember.h"
#include "CM/CMSupport/command/CMRenameMember.h"
#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMTargetFile.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <list>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class NameGuard : public CheckOutFixture {
  protected:
    NameGuard() {
        setToolProperty(IPN::CMFetchFromArchive, "get \"$UnitPath\"");
        setToolProperty(IPN::CMFetch, "get \"$Unit\"");
    }
    template <class OPERATION = CMFetchFromArchive> int runOn(const std::vector<CString> &paths) {
        std::list<CMArchiveItem> made;
        CMArchiveItemList items;
        for (const CString &path : paths) {
            CMArchiveItem *item = &made.emplace_back(path, "1.1", CMArchiveItem::readOnly, "", "");
            items.AddTail(item);
        }
        return OPERATION()(items, args, diags);
    }
    int move(CMUnitList units) { return CMMoveMember()(units, args, diags, false); }
    recording::Class &unitWithFile(const CString &directory, const CString &fileName) {
        auto &unit = host.addUnit("Pump");
        unit.directory = directory;
        unit.fileName = fileName;
        return unit;
    }
    void expectRefused(const std::string &path, const std::string &what) {
        EXPECT_THAT(host.worker.commands, IsEmpty());
        EXPECT_THAT(host.window.text(),
                    HasSubstr("No command was run for \"" + path + "\": the name contains " + what));
    }
};

TEST_F(NameGuard, AnItemThatWouldEndTheQuotesReachesNoShellAndFails) {
    EXPECT_EQ(runOn({"a\"; touch /tmp/x; \".ocl"}), 0);
    expectRefused("a\"; touch /tmp/x; \".ocl", "the character \"");
    expectNothingIsLeft();
}

TEST_F(NameGuard, EveryCharacterThatCannotBeQuotedIsRefusedInAnItem) {
    for (const char *const path : {"a$(id).ocl", "a`id`.ocl", "a>b.ocl", "a\nid\n.ocl", "a.ocl\\"}) {
        EXPECT_EQ(runOn({path}), 0) << path;
    }
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(NameGuard, TheNextItemIsTakenAsUsual) {
    EXPECT_EQ(runOn({"a$b.ocl", "Pump.ocl"}), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("get \"" + (unitsDirectory() / "Pump.ocl").string() + "\""));
    EXPECT_EQ(runOn({"Pump.ocl", "a$b.ocl"}), 0) << "the last item decides";
}

TEST_F(NameGuard, ARefusedItemRaisesNoQuestionAndIsNotReloaded) {
    auto &pump = unitWithFile(unitsDirectory().string(), "P$mp.ocl");
    makeWritable(pump);
    EXPECT_EQ(runOn<CMCheckOutFromArchive>({"P$mp.ocl"}), 0);
    EXPECT_THAT(driver.shown(), IsEmpty());
    EXPECT_THAT(calls(), ElementsAre("reloads open", "show window 1", "reloads close"));
}

TEST_F(NameGuard, BackslashesAsSeparatorsStayAllowed) {
    EXPECT_EQ(runOn({"sub\\Pump.ocl"}), 1);
    EXPECT_EQ(host.worker.commands.size(), 1U);
}

TEST_F(NameGuard, ADoubledBackslashThatLeavesOneAtTheEndOfTheDirectoryIsRefused) {
    EXPECT_EQ(runOn({"sub\\\\; id; .ocl"}), 0);
    expectRefused(unitsDirectory().string() + "/sub\\", "a backslash at the end");
}

TEST_F(NameGuard, ADashAtTheBeginningAndShellCharactersInQuotesAreNoFault) {
    EXPECT_EQ(runOn({"-r; id & 'x'.ocl"}), 1);
    EXPECT_EQ(host.worker.commands.size(), 1U);
}

TEST_F(NameGuard, TheWindowShowsNoControlCharacters) {
    runOn({"a\x1b[2J.ocl"});
    expectRefused("a?[2J.ocl", "a control character");
}

TEST_F(NameGuard, AUnitOfAHostThatLetsSuchANameThroughIsRefusedAsWell) {
    auto units = list(&unitWithFile("/w", "P\".ocl"), &unitWithFile("/w/$(id)", "Q.ocl"));
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    expectRefused("/w/P\".ocl", "the character \"");
    expectRefused("/w/$(id)/Q.ocl", "the character $");
}

TEST_F(NameGuard, ARefusedUnitLosesTheResultButNotItsPlaceInTheList) {
    auto &refused = unitWithFile("/w", "P`.ocl");
    auto &pump = host.addUnit("Valve");
    auto units = list(&pump, &refused);
    EXPECT_EQ(CMCheckOut()(units, args, diags, false), 0);
    EXPECT_EQ(units.GetCount(), 2);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Valve.ocl"));
}

TEST_F(NameGuard, ADirectoryThatEndsInABackslashIsRefused) {
    auto units = list(&unitWithFile("/w\\", "P.ocl"));
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    expectRefused("/w\\", "a backslash at the end");
}

TEST_F(NameGuard, EachNameThatATemplateSeesOfAUnitCounts) {
    auto &pump = unitWithFile("/w", "P.ocl");
    pump.fullFileName = "/w/P.ocl";
    auto units = list(&pump);
    pump.fileName = "P`.ocl";
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0) << "the file name";
    pump.fileName = "P.ocl";
    pump.directory = "/w$x";
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0) << "the unit's own directory";
    EXPECT_THAT(host.worker.commands, IsEmpty());
    pump.directory = "C:\\";
    pump.fullFileName = "C:\\P.ocl";
    EXPECT_EQ(CMFetch()(units, args, diags, false), 1) << "a root is seen without its separator";
    EXPECT_THAT(host.worker.commands, ElementsAre("get \"P.ocl\""));
}

TEST_F(NameGuard, AddingByDirectoriesRunsNothingForADirectoryThatCannotBeQuoted) {
    setGeneral("CMTool", "RCS");
    setToolProperty("CheckOutCheckInDirectoryOnceDuringAddToArchive", "True");
    setToolProperty("CheckOut", "co $LabelPart");
    setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "add $UnitPath");
    setToolProperty("CheckIn", "ci $UnitPath");
    auto units = list(&unitWithFile("/w/a$b", "P.ocl"), &unitWithFile("/w/c", "Q`.ocl"));
    EXPECT_EQ(CMAddMember()(units, args, diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/c", "ci /w/c"));
    EXPECT_THAT(host.window.text(), HasSubstr("\"/w/a$b\""));
    EXPECT_THAT(host.window.text(), HasSubstr("\"/w/c/Q`.ocl\""));
}

TEST_F(NameGuard, AMoveFromOrToADirectoryThatCannotBeQuotedRunsNothing) {
    setToolProperty("Move", "mv $oldName $newName");
    auto &owner = host.addSubsystem("Old");
    owner.partsDirectory = "/old";
    auto &bad = host.addSubsystem("New");
    bad.partsDirectory = "/new\"";
    auto &pump = unitWithFile("/old", "P.ocl");
    EXPECT_EQ(move(list(&pump, &owner, &bad)), 0);
    EXPECT_EQ(move(list(&pump, &bad, &owner)), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    auto &package = host.addSubsystem("Package");
    package.persistAs = "$(id)";
    EXPECT_EQ(move(list(&package, &owner, &owner)), 1) << "nothing to move";
    auto &other = host.addSubsystem("Other");
    other.partsDirectory = "/other";
    EXPECT_EQ(move(list(&package, &owner, &other)), 0);
    expectRefused("$(id)", "the character $");
}

TEST_F(NameGuard, ARefusedUnitGivesZeroInAMoveAndADeletionWhoseOtherUnitsAreDone) {
    setToolProperty("Move", "mv $Unit");
    setToolProperty(IPN::Delete, "rm $Unit");
    auto &from = host.addSubsystem("Old");
    from.partsDirectory = "/old";
    auto &to = host.addSubsystem("New");
    to.partsDirectory = "/new";
    auto &odd = unitWithFile("/old", "Q`.ocl");
    auto &valve = unitWithFile("/old", "Valve.ocl");
    EXPECT_EQ(move(list(&odd, &from, &to, &valve, &from, &to)), 0);
    CMUnitList units = list(&odd, &valve);
    EXPECT_EQ(CMMoveMember().movePackageContent(nullptr, units, "/old", "/new", args, diags, false), 0);
    EXPECT_EQ(CMDeleteMember()(units, args, diags, false), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv Valve.ocl", "mv Valve.ocl", "rm Valve.ocl"));
}

TEST_F(NameGuard, NamesThatMakeAConditionalOnlyTogetherAreRefused) {
    // "(" and ")" come from the archive, the directories or the target; "?" comes from the unit.
    auto &pump = unitWithFile("/w", "P?.ocl");
    auto units = list(&pump);
    EXPECT_EQ(CMFetch()(units, args, diags, false), 1);
    host.worker.commands.clear();

    setToolProperty(IPN::CMArchive, "/archive (old)");
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    expectRefused("/w/P?.ocl", "together with /archive (old), a \"(\", a \"?\" and a \")\"");
    EXPECT_EQ(runOn({"/w/Q?.ocl"}), 0);
    setToolProperty("Rename", "mv $oldName $newName");
    EXPECT_EQ(CMRenameMember()(&pump, "/w/P?.ocl", "/w/Q.ocl", diags, false), 0);
    setToolProperty(IPN::CMArchive, "/archive");

    CMTargetFile target("/target (new)");
    args.AddTail(&target);
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    args.RemoveTail();

    setToolProperty("Move", "mv $oldName $newName");
    auto &from = host.addSubsystem("Old");
    from.partsDirectory = "/old (1";
    auto &to = host.addSubsystem("New");
    to.partsDirectory = "/new)";
    EXPECT_EQ(move(list(&pump, &from, &to)), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());

    auto &plain = unitWithFile("/w", "P.ocl");
    EXPECT_EQ(move(list(&plain, &from, &to)), 1);
    EXPECT_EQ(host.worker.commands.size(), 1U);
}

TEST_F(NameGuard, AnArchiveThatCannotBeQuotedReachesNoShell) {
    setToolProperty(IPN::CMArchive, "a\"; touch proof; \"");
    setToolProperty(IPN::CMListArchive, "list \"$archive\"");
    setToolProperty(IPN::CMConnectToCMRepository, "connect \"$archive\"");
    auto units = list(&unitWithFile("/w", "P.ocl"));
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    EXPECT_EQ(runOn({"/w/Q.ocl"}), 0);
    CMArchiveItemList found;
    EXPECT_EQ(CMListArchive()(found, args, diags), 0);
    CMArchive archive("");
    args.AddTail(&archive);
    EXPECT_EQ(CMConnectToCMRepository()(units, args, diags), 0);
    args.RemoveTail();
    expectRefused("a\"; touch proof; \"", "the character \"");
    expectNothingIsLeft();
}

TEST_F(NameGuard, TheArchiveOfAUnitsOwnIsRefusedForThisUnit) {
    setToolProperty(IPN::CMArchive, "/archive");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    setToolProperty(IPN::CMCheckIn, "ci \"$archive\" $Unit");
    auto &bad = unitWithFile("/w", "P.ocl");
    bad.batchArchive = "x\"; touch proof; \"";
    auto &good = unitWithFile("/w", "Q.ocl");
    good.batchArchive = "/good";
    auto units = list(&bad);
    EXPECT_EQ(CMCheckIn()(units, args, diags, false), 0);
    expectRefused("x\"; touch proof; \"", "the character \"");
    units = list(&bad, &good);
    EXPECT_EQ(CMCheckIn()(units, args, diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("ci \"/good\" Q.ocl"));
}

TEST_F(NameGuard, AUnitIsCheckedTogetherWithItsOwnArchiveAndNotWithTheOneBeforeIt) {
    setToolProperty(IPN::CMArchive, "/archive");
    setToolProperty(IPN::CMArchiveSelection, "File");
    setToolProperty(IPN::CMCheckIn, "ci $Unit");
    auto &first = unitWithFile("/w", "P.ocl");
    first.batchArchive = "/a(b";
    auto &second = unitWithFile("/w", "Q?).ocl");
    second.batchArchive = "/c";
    auto units = list(&first, &second);
    EXPECT_EQ(CMCheckIn()(units, args, diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("ci P.ocl", "ci Q?).ocl"));
    host.worker.commands.clear();
    second.batchArchive = "/a(b";
    units = list(&second);
    EXPECT_EQ(CMCheckIn()(units, args, diags, false), 0);
    expectRefused("/w/Q?).ocl", "together with /a(b, a \"(\", a \"?\" and a \")\"");
}

TEST_F(NameGuard, OfAnArchiveWithVariablesTheExpandedTextCounts) {
    setToolProperty(IPN::CMArchive, "$Place/$Unit");
    setToolProperty(IPN::CMFetch, "get \"$archive\"");
    setToolProperty("Place", "/archive");
    auto units = list(&unitWithFile("/w", "P.ocl"));
    EXPECT_EQ(CMFetch()(units, args, diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("get \"/archive/P.ocl\""));
    host.worker.commands.clear();
    setToolProperty("Place", "/`id`");
    EXPECT_EQ(CMFetch()(units, args, diags, false), 0);
    expectRefused("/`id`/P.ocl", "the character `");
}

TEST_F(NameGuard, ARenameWithAPathThatCannotBeQuotedFails) {
    setToolProperty("Rename", "mv $oldName $newName");
    auto &pump = unitWithFile("/w", "P.ocl");
    EXPECT_EQ(CMRenameMember()(&pump, "/w/a`b.ocl", "/w/P.ocl", diags, false), 0);
    EXPECT_EQ(CMRenameMember()(&pump, "/w/P.ocl", "/w/a$b.ocl", diags, false), 0);
    EXPECT_EQ(CMRenameMember()(&pump, "/w/P.ocl", "/x\\/a.ocl", diags, false), 0);
    EXPECT_EQ(CMRenameMember()(&pump, "/w/P.ocl", "/x\\/y/a.ocl", diags, false), 0) << "the outer new directory";
    EXPECT_EQ(CMRenameMember()(&pump, "/x\\/y/a.ocl", "/w/P.ocl", diags, false), 0) << "the outer old directory";
    auto &odd = unitWithFile("/w", "Q`.ocl");
    EXPECT_EQ(CMRenameMember()(&odd, "/w/P.ocl", "/w/Q.ocl", diags, false), 0) << "the unit's own names";
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(CMRenameMember()(&pump, "/w/P.ocl", "/w/Q.ocl", diags, false), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /w/P.ocl /w/Q.ocl"));
}

TEST_F(NameGuard, ADirectoryThatCannotBeQuotedIsNotDeleted) {
    setToolProperty("DeleteDirectory", "rmdir \"$UnitDirPath\"");
    EXPECT_EQ(CMDeleteMember().deleteDirectory("/w/\"; id; \"", args, diags, false), 0);
    expectRefused("/w/\"; id; \"", "the character \"");
}

TEST_F(NameGuard, AnArchiveThatCannotBeQuotedIsNotTakenOverFromTheTool) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect");
    setToolProperty("PostConnectToCMRepository", "after $UnitDirPath");
    setToolProperty("HeaderInfoItsRepositoryPath", "at: (.*)");
    setToolProperty("Repository", "$ArchivePath/$SubDirs");
    int runs = 0;
    host.worker.run = [&runs](const CString &) {
        ++runs;
        return recording::ToolRun{{"at: /a\"; id; \"\n"}, {}, 0};
    };
    CMUnitList none;
    EXPECT_EQ(CMConnectToCMRepository()(none, args, diags), 0) << "it is not connected";
    EXPECT_EQ(runs, 1) << "the second command must not run";
    CString layout;
    EXPECT_NE(CMProperty::getToolPropertyValue("Repository", layout, false), 0);
    EXPECT_TRUE(layout == "$ArchivePath/$SubDirs") << layout;
    EXPECT_THAT(host.window.text(), HasSubstr("The archive \"/a\"; id; \"\" was not accepted"));
}

} // namespace
