// Tests the file name of a unit when undoing a check out restores another name of the unit.
#include "CM/CMSupport/command/CMUnCheckout.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RenameAfterUndo : public CheckOutFixture {
  protected:
    RenameAfterUndo() { setToolProperty(IPN::CMUnLockItem, "unco $Unit"); }
    /// Undoes the check out of the unit, whose archived version has another name.
    int undo(recording::Class &unit, const CString &archivedName) {
        host.reload.reloadUnit = [archivedName](IUnit *reloaded, int) {
            recording::ObjectState::of(reloaded).name = archivedName;
            return reloaded;
        };
        CMUnitList units = list(&unit);
        return CMUnCheckout()(units, args, diags, false);
    }
    void rename(IUnit *unit, const CString &oldName, CString oldFileName) {
        CMUnCheckout().renameFileIfNeeded(unit, oldName, oldFileName);
    }
    [[nodiscard]] std::vector<std::string> renameCalls() const {
        std::vector<std::string> kept;
        for (const std::string &call : host.calls) {
            if (call.starts_with("ask whether") || call.starts_with("approve") || call.starts_with("set file")) {
                kept.push_back(call);
            }
        }
        return kept;
    }
    static inline const std::string ask = "ask whether a part's file keeps its name ";
};

TEST_F(RenameAfterUndo, AFileThatWasNamedAfterItsUnitFollowsTheName) {
    auto &pump = host.addClass("Pump");
    EXPECT_EQ(undo(pump, "Fan"), 1);
    EXPECT_THAT(renameCalls(), ElementsAre(ask + "Plant ", "approve rename Fan Fan", "set file name Fan Fan"));
}

TEST_F(RenameAfterUndo, TheFileFollowsInsideTheReloadAndBeforeHeaderAndMode) {
    undo(host.addClass("Pump"), "Fan");
    const auto place = [this](const std::string &call) { return std::ranges::find(host.calls, call); };
    EXPECT_LT(place("reload Pump flag=0"), place("set file name Fan Fan"));
    EXPECT_LT(place("set file name Fan Fan"), place("reload scope end"));
    EXPECT_LT(place("set file name Fan Fan"), place("update header Fan 1"));
    EXPECT_NE(place("update header Fan 1"), host.calls.end());
}

TEST_F(RenameAfterUndo, AFileThatNeverHadTheUnitsNameKeepsItsOwn) {
    auto &pump = host.addClass("Pump");
    pump.fileName = "Other.ocl";
    EXPECT_EQ(undo(pump, "Fan"), 1);
    EXPECT_THAT(renameCalls(), IsEmpty());
    EXPECT_EQ(pump.fileName, "Other.ocl");
}

TEST_F(RenameAfterUndo, AFileNamedAfterItsUnitInOtherLettersKeepsItsName) {
    auto &pump = host.addClass("Pump");
    pump.fileName = "pump.ocl";
    undo(pump, "Fan");
    EXPECT_THAT(renameCalls(), IsEmpty());
}

TEST_F(RenameAfterUndo, AReloadThatKeepsTheNameAsksNobody) {
    undo(host.addClass("Pump"), "Pump");
    EXPECT_THAT(renameCalls(), IsEmpty());
}

TEST_F(RenameAfterUndo, TheOwnersRefusalKeepsTheFileName) {
    project().partFileNamesKept = 2; // anything but 0 is a refusal
    auto &pump = host.addClass("Pump");
    EXPECT_EQ(undo(pump, "Fan"), 1);
    EXPECT_THAT(renameCalls(), ElementsAre(ask + "Plant "));
    EXPECT_EQ(pump.fileName, "Pump.ocl");
}

TEST_F(RenameAfterUndo, TheOwnerThatIsAskedIsTheDirectOne) {
    auto &motor = host.addSubsystem("Motor");
    undo(host.addClass("Pump", &motor), "Fan");
    EXPECT_THAT(renameCalls(), testing::Contains(ask + "Motor "));
}

TEST_F(RenameAfterUndo, WithoutTheHostsApprovalTheFileKeepsItsName) {
    auto &pump = host.addClass("Pump");
    pump.renameApproved = false;
    EXPECT_EQ(undo(pump, "Fan"), 1);
    EXPECT_THAT(renameCalls(), ElementsAre(ask + "Plant ", "approve rename Fan Fan"));
}

TEST_F(RenameAfterUndo, AUnitWithoutAnOwnerKeepsItsFileName) {
    project().name = "Factory";
    rename(&project(), "Plant", "Plant");
    EXPECT_THAT(renameCalls(), IsEmpty());
}

TEST_F(RenameAfterUndo, AUnitWhoseOwnerIsNoUnitKeepsItsFileName) {
    auto &fan = host.addClass("Fan", &host.addElement("group"));
    rename(&fan, "Pump", "Pump");
    EXPECT_THAT(renameCalls(), IsEmpty());
}

TEST_F(RenameAfterUndo, NoUnitIsNoTrouble) {
    rename(nullptr, "Pump", "Pump");
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(RenameAfterUndo, AUnitThatIsLoadedAnewKeepsItsFileName) {
    auto &pump = host.addClass("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&pump](const CString &, const CString &, int) {
        pump.name = "Fan";
        return &pump;
    };
    CMUnitList units = list(&pump);
    EXPECT_EQ(CMUnCheckout()(units, args, diags, false), 1);
    EXPECT_THAT(renameCalls(), IsEmpty());
}

} // namespace
