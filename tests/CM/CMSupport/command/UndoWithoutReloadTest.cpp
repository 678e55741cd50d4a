// Tests the two forms of undo check out that leave updating the model to the caller: of archive items, and
// recursive.
#include "CM/CMSupport/command/CMRecUnCheckout.h"
#include "CM/CMSupport/command/CMUnCheckout.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <list>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class UndoWithoutReload : public CheckOutFixture {
  protected:
    UndoWithoutReload() { setToolProperty(IPN::CMUnLockItem, "unco $Unit"); }
    CMArchiveItem *item(const CString &path) {
        return &made_.emplace_back(path, "1.1", CMArchiveItem::readOnly, "", "");
    }
    int undoItems(std::initializer_list<CMArchiveItem *> given) {
        items.RemoveAll();
        for (CMArchiveItem *entry : given) {
            items.AddTail(entry);
        }
        return CMUnCheckout()(items, args, diags);
    }
    int undoUnits(CMUnitList &units, bool hybrid = false) { return CMRecUnCheckout()(units, args, diags, hybrid); }
    /// Expects that only the runs and their log lines have reached the host.
    void expectOnlyRunsAndLogs() {
        for (const std::string &call : calls()) {
            EXPECT_TRUE(call.starts_with("run ") || call.starts_with("log ")) << call;
        }
    }

    CMArchiveItemList items;

  private:
    std::list<CMArchiveItem> made_;
};

// --- Archive items.

TEST_F(UndoWithoutReload, OfItemsRunsOneCommandEachAndReloadsNothing) {
    host.addUnit("Pump");
    EXPECT_EQ(undoItems({item("Pump.ocl"), item("Valve.ocl")}), 1);
    const std::string log = "log 4 ../CM/CMSupport/UnCheckout: ";
    const std::string before = log + "Executing the following command to uncheck out the file from the archive: ";
    const std::string after = log + "Uncheck out from the archive command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "unco Pump.ocl", "run unco Pump.ocl", after,
                                     before + "unco Valve.ocl", "run unco Valve.ocl", after));
    EXPECT_EQ(items.GetCount(), 2);
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(UndoWithoutReload, OfItemsPassesOverANullItemWithoutALogLine) {
    EXPECT_EQ(undoItems({nullptr}), 0);
    EXPECT_THAT(host.logLines, IsEmpty());
    EXPECT_EQ(undoItems({nullptr, item("Pump.ocl")}), 1);
    EXPECT_EQ(host.logLines.size(), 2U);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
}

TEST_F(UndoWithoutReload, OfAnEmptyItemListIsNothing) {
    EXPECT_EQ(undoItems({}), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(UndoWithoutReload, OfItemsUsesNoGuard) {
    useOldLayout();
    setToolProperty(IPN::CMUnLockItem, "unco all");
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(undoItems({item("Plant.ory")}), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    EXPECT_EQ(read(scratch / "Plant.ory"), "new");
}

TEST_F(UndoWithoutReload, OfItemsSavesNothingAndAsksNobody) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    makeWritable(host.addUnit("Pump"));
    EXPECT_EQ(undoItems({item("Pump.ocl")}), 1);
    expectOnlyRunsAndLogs();
}

TEST_F(UndoWithoutReload, OfItemsWithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(undoItems({item("Pump.ocl"), item("Valve.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(UndoWithoutReload, OfItemsAsksForTheToolAndExpandsWithoutTheHybridFlag) {
    useProvider();
    host.setToolDefault("Basalt", IPN::CMUnLockItem, "hybrid $Unit");
    host.setToolDefault("SCC", IPN::CMUnLockItem, "unco $Unit");
    EXPECT_EQ(undoItems({item("Pump.ocl")}), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
    host.setTool("None");
    EXPECT_EQ(undoItems({item("Pump.ocl")}), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(UndoWithoutReload, OfItemsOnlyTheLastDecides) {
    setToolProperty(IPN::CMUnLockItem, "unco $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    EXPECT_EQ(undoItems({item("Pump.ocl"), item("Valve.ocl")}), 1);
    EXPECT_EQ(undoItems({item("Pump.ocl"), item("Valve.ocl")}), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco x Valve.ocl", "unco x Pump.ocl"));
    EXPECT_TRUE(diags.IsEmpty());
    args.RemoveAll();
}

// --- Recursively.

TEST_F(UndoWithoutReload, RecursivelyRunsOneCommandEachAndReloadsNothing) {
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(undoUnits(units), 1);
    const std::string log = "log 4 ../CM/CMSupport/RecUnCheckout: ";
    const std::string before = log + "Executing the following command to recursively uncheck out the file(s): ";
    const std::string after = log + "Recursive uncheck out command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "unco Pump.ocl", "run unco Pump.ocl", after,
                                     before + "unco Valve.ocl", "run unco Valve.ocl", after));
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(UndoWithoutReload, RecursivelyOfAnEmptyListSucceedsEvenWithoutATool) {
    CMUnitList none;
    EXPECT_EQ(undoUnits(none), 1);
    host.setTool("None");
    EXPECT_EQ(undoUnits(none), 1);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(UndoWithoutReload, RecursivelyWithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(undoUnits(units), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(UndoWithoutReload, RecursivelyEachRunLogsItsOwnOutputOnly) {
    host.worker.run = [](const CString &command) { return recording::ToolRun{{command + " done\n"}, {}, 0}; };
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    undoUnits(units);
    EXPECT_THAT(logTexts(),
                Contains("Recursive uncheck out command returned the following: unco Pump.ocl done\n"));
    EXPECT_THAT(logTexts(),
                Contains("Recursive uncheck out command returned the following: unco Valve.ocl done\n"));
}

TEST_F(UndoWithoutReload, RecursivelyTakesDuplicatesSkipsNullAndLeavesTheListAlone) {
    auto &pump = host.addUnit("Pump");
    auto units = list(&pump, nullptr, &pump);
    EXPECT_EQ(undoUnits(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl", "unco Pump.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&pump, nullptr, &pump));
}

TEST_F(UndoWithoutReload, RecursivelyAListOfNothingButNullGivesNothing) {
    auto units = list(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(undoUnits(units), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(UndoWithoutReload, RecursivelySavesNothingSelectsNoArchiveUsesNoGuardAndAsksNobody) {
    useOldLayout();
    setToolProperty("AskOnCheckoutReadWrite", "Yes");
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMUnLockItem, "unco $archive");
    project().batchArchive = "/archives/other";
    makeWritable(project());
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    CMUnitList units = list(&project());
    EXPECT_EQ(undoUnits(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco /archives/plant"));
    EXPECT_EQ(read(scratch / "Plant.ory"), "new");
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    expectOnlyRunsAndLogs();
}

TEST_F(UndoWithoutReload, RecursivelyIgnoresTheHybridFlag) {
    useProvider();
    host.setToolDefault("Basalt", IPN::CMUnLockItem, "hybrid $Unit");
    host.setToolDefault("SCC", IPN::CMUnLockItem, "unco $Unit");
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(undoUnits(units, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
    host.setTool("None");
    EXPECT_EQ(undoUnits(units, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(UndoWithoutReload, RecursivelyOnlyTheLastUnitDecides) {
    setToolProperty(IPN::CMUnLockItem, "unco $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(undoUnits(units), 1);
    EXPECT_EQ(undoUnits(units), 0);
    args.RemoveAll();
}

} // namespace
