#include "tests/CM/platform/dialog/SampleDialog.h"

#include "orchard/messages/ScriptedDialogDriver.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ListCtrl : public testing::Test {
  protected:
    void run(orchard::DialogScript script) {
        driver.play("SampleDialog", std::move(script));
        static_cast<void>(dialog.DoModal(&driver));
    }
    std::vector<CString> names() {
        std::vector<CString> names;
        for (int row = 0; row < dialog.units.GetItemCount(); ++row) {
            names.push_back(dialog.units.GetItemText(row, 0));
        }
        return names;
    }

    SampleDialog dialog;
    orchard::ScriptedDialogDriver driver;
};

TEST_F(ListCtrl, SelectingRowsReplacesTheSelectionAndTellsTheDialog) {
    run({"select units 2 0", "select units 1 2", "close"});
    EXPECT_THAT(dialog.units.selectedRows(), ElementsAre(1, 2));
    EXPECT_EQ(dialog.units.GetSelectedCount(), 2);
    EXPECT_TRUE(dialog.ok.isEnabled());
}

TEST_F(ListCtrl, AnEmptySelectionIsASelection) {
    run({"select units 0", "select units", "close"});
    EXPECT_THAT(dialog.units.selectedRows(), IsEmpty());
    EXPECT_FALSE(dialog.ok.isEnabled());
}

TEST_F(ListCtrl, RefusesRowsThatAreNotThere) {
    run({"select units 0", "select units 1 3", "select units -1", "select units x", "close"});
    EXPECT_THAT(dialog.units.selectedRows(), ElementsAre(0));
    EXPECT_EQ(driver.problems().size(), 3U);
}

TEST_F(ListCtrl, SortsByTheClickedColumnAndKeepsEqualRowsInOrderAndSelectedRowsSelected) {
    run({"select units 1", "column units 1", "close"});
    EXPECT_THAT(names(), ElementsAre("Valve", "Motor", "Pump"));
    EXPECT_THAT(dialog.units.selectedRows(), ElementsAre(0));
    EXPECT_EQ(dialog.units.sortColumn(), 1);
}

TEST_F(ListCtrl, SortsDescendingAndKeepsEqualRowsInOrder) {
    run({"close"});
    dialog.units.sortByColumn(1, true);
    EXPECT_THAT(names(), ElementsAre("Pump", "Valve", "Motor"));
    EXPECT_TRUE(dialog.units.sortDescending());
}

TEST_F(ListCtrl, RefusesAColumnThatIsNotThere) {
    run({"column units 2", "close"});
    EXPECT_EQ(driver.problems().size(), 1U);
    EXPECT_EQ(dialog.units.sortColumn(), -1);
}

TEST_F(ListCtrl, ActivatingARowReachesItsHandler) {
    driver.play("SampleDialog", {"activate units 1"});
    EXPECT_EQ(dialog.DoModal(&driver), IDOK);
}

TEST_F(ListCtrl, ShortRowsHaveEmptyCellsBehindTheirEnd) {
    run({"close"});
    CListCtrl::Row row;
    row.cells = {"Alone"};
    const int index = dialog.units.InsertItem(std::move(row));
    EXPECT_EQ(dialog.units.GetItemText(index, 1), "");
    dialog.units.SetItemText(index, 1, "2.0");
    EXPECT_EQ(dialog.units.GetItemText(index, 1), "2.0");
    dialog.units.SetItemText(index, 2, "outside");
    EXPECT_EQ(dialog.units.GetItemText(index, 2), "");
    EXPECT_EQ(dialog.units.GetItemText(99, 0), "");
}

TEST_F(ListCtrl, ASelectionOfOneGivesWayToTheNext) {
    class One : public CDialog {
      public:
        One() : CDialog("One") {
            rows.InsertItem({});
            rows.InsertItem({});
        }
        CListCtrl rows{*this, "rows", "Rows", CListCtrl::Selection::one};
        CButton cancel{*this, "cancel", "Cancel", [this] { OnCancel(); }};
    } one;
    one.rows.selectRow(0, true);
    one.rows.selectRow(1, true);
    EXPECT_THAT(one.rows.selectedRows(), ElementsAre(1));
    driver.play("One", {"select rows 0 1", "select rows 0", "close"});
    EXPECT_EQ(one.DoModal(&driver), IDCANCEL);
    EXPECT_THAT(one.rows.selectedRows(), ElementsAre(0));
    EXPECT_THAT(driver.problems(), ElementsAre("One: select rows 0 1: refused"));
}

} // namespace
