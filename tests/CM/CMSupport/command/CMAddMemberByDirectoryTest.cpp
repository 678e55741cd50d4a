// Tests adding to the archive with each directory checked out and in once.
#include "CM/CMSupport/command/CMAddMember.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <functional>
#include <memory>
#include <ostream>
#include <streambuf>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AddMemberByDirectory : public CheckOutFixture {
  protected:
    AddMemberByDirectory() {
        setGeneral("CMTool", "RCS");
        setToolProperty("CheckOutCheckInDirectoryOnceDuringAddToArchive", "True");
        setToolProperty("CheckOut", "co $mode$LabelPart;");
        setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "add $UnitPath");
        setToolProperty("CheckIn", "ci $LogPart $UnitPath");
        setToolProperty(IPN::CMAddMember, "ordinary $Unit");
    }
    int add(CMUnitList units) { return CMAddMember()(units, args, diags, false); }
    recording::Class &unitIn(const CString &directory, const CString &name) {
        auto &unit = host.addUnit(name);
        unit.directory = directory;
        return unit;
    }
};

TEST_F(AddMemberByDirectory, TwoUnitsOfOneDirectoryTakeOneCheckOutTwoAddsAndOneCheckIn) {
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"), nullptr, &unitIn("/w/d", "Valve"))), 1);
    EXPECT_THAT(host.worker.commands,
                ElementsAre("co /w/d;", "add /w/d/Pump.ocl", "add /w/d/Valve.ocl", "ci -nc /w/d"));
    expectNothingIsLeft();
}

TEST_F(AddMemberByDirectory, MarksAndSavesFirstAndUpdatesNeitherHeaderNorMode) {
    add(list(&unitIn("/w/d", "Pump")));
    EXPECT_EQ(calls()[0], "set modified Pump value=1 notify=1");
    EXPECT_EQ(calls()[1], "save model");
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
}

TEST_F(AddMemberByDirectory, WritesTwoLogLinesForEachCommand) {
    host.worker.run = [](const CString &command) { return recording::ToolRun{{command + "!"}, {}, 0}; };
    add(list(&unitIn("/w/d", "Pump")));
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to check out the directory: co /w/d;",
                                        "Check out directory command returned the following: co /w/d;!",
                                        "Executing the following command to add the file add /w/d/Pump.ocl",
                                        "Add member command returned the following: add /w/d/Pump.ocl!",
                                        "Executing the following command to check in the directory: ci -nc /w/d",
                                        "Check in directory command returned the following: ci -nc /w/d!"));
    for (const auto &line : host.logLines) {
        EXPECT_EQ(line.name, 4);
        EXPECT_EQ(line.source, "../CM/CMSupport/AddMember");
    }
}

TEST_F(AddMemberByDirectory, EachDirectoryHasItsOwnRound) {
    add(list(&unitIn("/w/a", "Pump"), &unitIn("/w/b", "Valve"), &unitIn("/w/a", "Tank")));
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/a;", "add /w/a/Pump.ocl", "add /w/a/Tank.ocl",
                                                  "ci -nc /w/a", "co /w/b;", "add /w/b/Valve.ocl", "ci -nc /w/b"));
}

TEST_F(AddMemberByDirectory, TheSameUnitTwiceIsAddedOnce) {
    auto &pump = unitIn("/w/d", "Pump");
    add(list(&pump, &pump));
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/d;", "add /w/d/Pump.ocl", "ci -nc /w/d"));
}

TEST_F(AddMemberByDirectory, PlaceholdersAreReplacedEverywhereAndOtherNamesStay) {
    setToolProperty("CheckOut", "$mode-$mode $LabelPart $LabelPart $UnitPath $archive");
    setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "$UnitPath $UnitPath $LogPart");
    setToolProperty("CheckIn", "$LogPart $LogPart $UnitPath $UnitPath $mode");
    add(list(&unitIn("/w/d", "Pump")));
    EXPECT_THAT(host.worker.commands,
                ElementsAre("- /w/d /w/d $UnitPath $archive", "/w/d/Pump.ocl /w/d/Pump.ocl $LogPart",
                            "-nc -nc /w/d /w/d $mode"));
}

TEST_F(AddMemberByDirectory, ThePlaceholdersAreMatchedToTheLetter) {
    setToolProperty("CheckOut", "co $Mode $labelpart");
    add(list(&unitIn("/w/d", "Pump")));
    EXPECT_EQ(host.worker.commands.front(), "co $Mode $labelpart");
}

TEST_F(AddMemberByDirectory, TheCallersArgumentsAreNotUsed) {
    setToolProperty("CheckIn", "ci $extra");
    ExtraArgument extra;
    args.AddTail(&extra);
    add(list(&unitIn("/w/d", "Pump")));
    EXPECT_EQ(host.worker.commands.back(), "ci $extra");
    EXPECT_EQ(args.GetCount(), 1);
    args.RemoveAll();
}

TEST_F(AddMemberByDirectory, WithoutACheckOutTemplateNothingIsAddedThere) {
    setToolProperty("CheckOut", "");
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"))), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(host.logLines, IsEmpty());
}

TEST_F(AddMemberByDirectory, WithoutAnAddTemplateTheDirectoryIsStillCheckedOutAndIn) {
    setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "");
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/d;", "ci -nc /w/d"));
}

TEST_F(AddMemberByDirectory, WithoutAnAddTemplateEachAddGivesZeroAndNoDiagnostic) {
    setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "");
    EXPECT_EQ(CMAddMember().addMemberWithoutCheckInCheckOutDirectory("/w/d/Pump.ocl", args, diags), 0);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.logLines, IsEmpty());
}

TEST_F(AddMemberByDirectory, WithoutACheckInTemplateTheResultIsZeroAfterTheAdds) {
    setToolProperty("CheckIn", "");
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"))), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/d;", "add /w/d/Pump.ocl"));
}

TEST_F(AddMemberByDirectory, WithoutAnInstallationRootNothingRuns) {
    host.places.root.Empty();
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"))), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

/// A stream that calls a function when the first text is written to it.
class CallingBuffer : public std::streambuf {
  public:
    explicit CallingBuffer(std::function<void()> call) : call_(std::move(call)) {}

  protected:
    std::streamsize xsputn(const char * /*text*/, std::streamsize count) override {
        if (call_) {
            std::exchange(call_, {})();
        }
        return count;
    }
    int overflow(int character) override { return character; }

  private:
    std::function<void()> call_;
};

TEST_F(AddMemberByDirectory, ADirectoryThatCannotBeCheckedOutIsPassedOverAndALaterOneDecides) {
    breakExecute(); // until its failure is reported
    CallingBuffer buffer([this] { std::filesystem::create_directory(unitsDirectory()); });
    std::ostream stream(&buffer);
    getMainCMOutputer()() = &stream;
    EXPECT_EQ(add(list(&unitIn("/w/a", "Pump"), &unitIn("/w/b", "Valve"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/b;", "add /w/b/Valve.ocl", "ci -nc /w/b"));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddMemberByDirectory, AFailedAddKeepsTheOthersAndTheCheckIn) {
    auto &pump = unitIn("/w/d", "Pump");
    pump.fileName = "P`mp.ocl"; // which no template can quote
    ASSERT_EQ(CMAddMember().addMemberWithoutCheckInCheckOutDirectory(pump.getFullFileName(), args, diags), 0);
    EXPECT_EQ(add(list(&pump, &unitIn("/w/d", "Valve"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/d;", "add /w/d/Valve.ocl", "ci -nc /w/d"));
}

TEST_F(AddMemberByDirectory, AnErrorThatTheToolPrintsFailsNoAdd) {
    host.worker.run = [](const CString &command) {
        if (command.Find("Pump") >= 0) {
            return recording::ToolRun{{}, {"no\n"}, 0};
        }
        return recording::ToolRun{};
    };
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"), &unitIn("/w/d", "Valve"))), 1);
    EXPECT_THAT(host.worker.commands,
                ElementsAre("co /w/d;", "add /w/d/Pump.ocl", "add /w/d/Valve.ocl", "ci -nc /w/d"));
}

TEST_F(AddMemberByDirectory, ACheckOutThatFailsBehindAGoodRoundGivesZero) {
    EXPECT_EQ(add(list(&unitIn("/w/c", "Pump"), &unitIn("/w/a$b", "Valve"))), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/c;", "add /w/c/Pump.ocl", "ci -nc /w/c"));
}

TEST_F(AddMemberByDirectory, IfEveryCheckOutFailsNothingIsAddedAndTheResultIsZero) {
    breakExecute();
    EXPECT_EQ(add(list(&unitIn("/w/a", "Pump"), &unitIn("/w/b", "Valve"))), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(host.logLines.size(), 4U) << "both were tried";
}

TEST_F(AddMemberByDirectory, WithoutAToolEachStepMakesADiagnosticOfItsOwn) {
    host.setTool("None");
    CMAddMember operation;
    EXPECT_EQ(operation.checkOutDirectory("/w/d", args, diags), 0);
    EXPECT_EQ(operation.addMemberWithoutCheckInCheckOutDirectory("/w/d/Pump.ocl", args, diags), 0);
    EXPECT_EQ(operation.checkInDirectory("/w/d", args, diags), 0);
    EXPECT_EQ(diags.GetCount(), 3);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(AddMemberByDirectory, WithAProviderAsksForTheToolAndReadsNothingUnderTheProvidersName) {
    useProvider();
    for (const char *const key : {"CheckOut", "AddMember_WithoutCheckOutCheckInDirectory", "CheckIn"}) {
        host.setToolDefault("SCC", key, CString("scc ") + key);
        host.setToolDefault("Basalt", key, CString("basalt ") + key);
    }
    EXPECT_EQ(add(list(&unitIn("/w/d", "Pump"))), 1);
    EXPECT_THAT(host.worker.commands,
                ElementsAre("scc CheckOut", "scc AddMember_WithoutCheckOutCheckInDirectory", "scc CheckIn"));
    host.setTool("None");
    EXPECT_EQ(CMAddMember().checkOutDirectory("/w/d", args, diags), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(AddMemberByDirectory, WithTheToolNoneInTheGeneralPropertiesTheWayIsNotEvenLookedUp) {
    setGeneral("CMTool", "NONE");
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("ordinary Pump.ocl"));
    EXPECT_LT(lookUpOf("CheckOutCheckInDirectoryOnceDuringAddToArchive"), 0);
}

TEST_F(AddMemberByDirectory, AMissingToolCountsAsOneWithoutAName) {
    host.setProperty(nullptr, IPN::CM, IPN::General, "CMTool", "");
    EXPECT_EQ(add(list(&host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("ordinary Pump.ocl"));
    host.worker.commands.clear();
    host.setToolDefault("", "CheckOutCheckInDirectoryOnceDuringAddToArchive", "True");
    add(list(&unitIn("/w/d", "Valve")));
    EXPECT_THAT(host.worker.commands, ElementsAre("co /w/d;", "add /w/d/Valve.ocl", "ci -nc /w/d"));
}

TEST_F(AddMemberByDirectory, TheWayIsReadFromTheActiveProjectUnderTheToolsName) {
    add(list(&unitIn("/w/d", "Pump")));
    const auto at = lookUpOf("CheckOutCheckInDirectoryOnceDuringAddToArchive");
    ASSERT_GE(at, 0);
    const auto &lookup = host.lookups[static_cast<std::size_t>(at)];
    EXPECT_EQ(lookup.object, &project());
    EXPECT_EQ(lookup.property.metaclass, "RCS");
    const auto &tool = host.lookups[static_cast<std::size_t>(at) - 1];
    EXPECT_EQ(tool.property.metaclass, "General");
    EXPECT_EQ(tool.property.key, "CMTool");
}

TEST_F(AddMemberByDirectory, AFalseOrMissingSwitchTakesTheOrdinaryWay) {
    setToolProperty("CheckOutCheckInDirectoryOnceDuringAddToArchive", "No");
    add(list(&host.addUnit("Pump")));
    setGeneral("CMTool", "Other");
    add(list(&host.addUnit("Valve")));
    EXPECT_THAT(host.worker.commands, ElementsAre("ordinary Pump.ocl", "ordinary Valve.ocl"));
}

TEST_F(AddMemberByDirectory, AnEmptyListGivesZeroAndSavesNothing) {
    EXPECT_EQ(add(list()), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

class GroupUnits : public AddMemberByDirectory {
  protected:
    ~GroupUnits() override {
        for (const auto &[directory, units] : map) {
            const std::unique_ptr<CMUnitList> owned(units);
        }
    }
    void group(CMUnitList units) { CMAddMember().groupUnitsByPersistAs(units, map); }
    [[nodiscard]] std::vector<IUnit *> in(const char *directory) const {
        CMUnitList *found = nullptr;
        return map.Lookup(directory, found) ? entries(*found) : std::vector<IUnit *>();
    }
    CMAddMember::UnitsByDirectory map{10};
};

TEST_F(GroupUnits, FilesUnitsUnderTheDirectoryOfTheirFile) {
    auto &pump = unitIn("/w/a", "Pump");
    auto &valve = unitIn("/w/b", "Valve");
    auto &tank = unitIn("/w/a", "Tank");
    group(list(&pump, &valve, nullptr, &tank));
    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_THAT(in("/w/a"), ElementsAre(&pump, &tank));
    EXPECT_THAT(in("/w/b"), ElementsAre(&valve));
}

TEST_F(GroupUnits, GoesByTheFullFileNameAndNotByTheUnitsOwnDirectory) {
    auto &pump = unitIn("/w/own", "Pump");
    pump.fullFileName = "/w/elsewhere/Pump.ocl";
    group(list(&pump));
    EXPECT_EQ(map.GetCount(), 1);
    EXPECT_THAT(in("/w/elsewhere"), ElementsAre(&pump));
}

TEST_F(GroupUnits, AddsToTheListsThatTheMapHoldsAndKeepsThemUnique) {
    auto &pump = unitIn("/w/a", "Pump");
    auto &tank = unitIn("/w/a", "Tank");
    group(list(&pump));
    group(list(&pump));
    group(list(&tank, &pump, &tank));
    EXPECT_THAT(in("/w/a"), ElementsAre(&pump, &tank));
}

} // namespace
