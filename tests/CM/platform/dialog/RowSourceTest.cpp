// Tests a list over the records of its dialog, and the changes that it reports to a driver with windows.
#include "CM/platform/dialog/CDialog.h"
#include "CM/platform/dialog/CListCtrl.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <numeric>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int many = 100'000;

struct Record {
    std::string name;
    int icon;
};

/// The records of a dialog, which shows some of them in its own order.
class Records final : public RowSource {
  public:
    Records() {
        for (int i = 0; i < many; ++i) {
            records.push_back({"unit " + std::to_string(i), i % 13});
        }
        order.resize(many);
        std::iota(order.begin(), order.end(), 0);
    }
    [[nodiscard]] int rowCount() const override { return static_cast<int>(order.size()); }
    [[nodiscard]] CString text(int row, int /*column*/) const override {
        ++textsAsked;
        return {at(row).name};
    }
    [[nodiscard]] ItemImages images(int row) const override { return {at(row).icon, 0, 0}; }
    [[nodiscard]] void *data(int row) const override { return &at(row); }
    [[nodiscard]] Record &at(int row) const {
        return records[static_cast<std::size_t>(order[static_cast<std::size_t>(row)])];
    }

    mutable std::vector<Record> records;
    std::vector<int> order;
    mutable int textsAsked = 0;
};

/// Acts as a driver with windows: counts the rows that it redraws.
class Window final : public RowObserver {
  public:
    explicit Window(CListCtrl &list) : list_(list) { list_.setObserver(this); }
    ~Window() { list_.setObserver(nullptr); }

    std::vector<std::string> changes;
    int rowsBefore = -1; ///< as the last change was announced

  private:
    void beforeChange(const RowChange & /*change*/) override { rowsBefore = list_.GetItemCount(); }
    void afterChange(const RowChange &change) override {
        constexpr const char *kinds[] = {"changed", "inserted", "removed", "reordered", "reset", "selection"};
        changes.push_back(std::string(kinds[static_cast<int>(change.kind)]) + " " + std::to_string(change.first) +
                          " " + std::to_string(change.count));
    }

    CListCtrl &list_;
};

class ListDialog : public CDialog {
  public:
    ListDialog() : CDialog("List") {
        list.InsertColumn("Name");
        list.InsertColumn("State");
    }
    CListCtrl list{*this, "list", "Units", CListCtrl::Selection::many, {[this] { ++selections; }, {}, {}}};
    int selections = 0;
};

class LargeList : public testing::Test {
  protected:
    LargeList() { list.SetSource(&records); }

    Records records;
    ListDialog dialog;
    CListCtrl &list = dialog.list;
};

TEST_F(LargeList, AsksForTheCellsThatAreShownOnly) {
    EXPECT_EQ(list.GetItemCount(), many);
    list.selectRow(7, true);
    list.reorderRows([this] { std::ranges::reverse(records.order); });
    EXPECT_EQ(records.textsAsked, 0) << "no cell is copied";
    EXPECT_EQ(list.GetItemText(0, 0), "unit 99999");
    EXPECT_EQ(list.GetItemImages(0).icon, 99999 % 13);
    EXPECT_EQ(list.GetItemData(0), &records.records.back());
    EXPECT_EQ(records.textsAsked, 1);
}

TEST_F(LargeList, OneChangedRowIsOneUpdate) {
    Window window(list);
    const auto revision = list.revision();
    records.at(4711).name = "renamed";
    list.rowsChanged(4711);
    EXPECT_THAT(window.changes, ElementsAre("changed 4711 1"));
    EXPECT_EQ(list.revision(), revision + 1);
    EXPECT_EQ(records.textsAsked, 0);
}

TEST_F(LargeList, ASelectionFollowsItsRowsThroughAResort) {
    list.selectRows({1, 2, 99'999});
    Window window(list);
    list.reorderRows([this] { std::ranges::reverse(records.order); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(0, 99'997, 99'998));
    EXPECT_THAT(window.changes, ElementsAre("reordered 0 100000"));
    list.resetRows([this] { records.order.resize(10); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(0)) << "the rows that are gone are not selected";
}

TEST_F(LargeList, RowsThatComeAndGoMoveTheSelection) {
    list.selectRows({10, 20, 30});
    Window window(list);
    list.removeRows(15, 10,
                    [this] { records.order.erase(records.order.begin() + 15, records.order.begin() + 25); });
    EXPECT_EQ(window.rowsBefore, many) << "announced while the rows are still there";
    EXPECT_THAT(list.selectedRows(), ElementsAre(10, 20));
    list.insertRows(11, 2, [this] { records.order.insert(records.order.begin() + 11, {15, 16}); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(10, 22));
    EXPECT_THAT(window.changes, ElementsAre("removed 15 10", "inserted 11 2"));
}

TEST_F(LargeList, RowsAtTheEdgesOfAChangeMoveTheSelectionToo) {
    const auto at = [this](int row) { return records.order.begin() + row; };
    list.selectRows({10, 12, 13});
    list.insertRows(10, 2, [&] { records.order.insert(at(10), {1, 2}); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(12, 14, 15)) << "in front of a selected row";
    list.removeRows(12, 3, [&] { records.order.erase(at(12), at(15)); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(12)) << "the first and the last row, and the one after them";
    list.insertRows(list.GetItemCount(), 1, [&] { records.order.push_back(3); });
    EXPECT_THAT(list.selectedRows(), ElementsAre(12)) << "after all others";
}

TEST_F(LargeList, AChangeOfNoRowsIsNotAnnounced) {
    const auto revision = list.revision();
    Window window(list);
    list.insertRows(5, 0, [] {});
    list.removeRows(5, 0, [] {});
    list.rowsChanged(5, 0);
    EXPECT_THAT(window.changes, IsEmpty());
    EXPECT_EQ(window.rowsBefore, -1) << "nor before";
    EXPECT_EQ(list.revision(), revision);
}

TEST_F(LargeList, AnObserverFindsItsCurrentRowByIdentityAfterAResort) {
    const void *const current = list.identityOf(7);
    list.reorderRows([this] { std::ranges::reverse(records.order); });
    EXPECT_EQ(list.identityOf(many - 1 - 7), current);
    EXPECT_NE(list.identityOf(7), current);
    EXPECT_EQ(list.identityOf(many), nullptr);
    list.SetSource(nullptr);
    list.InsertItem({{"Valve"}});
    list.InsertItem({{"Pump"}});
    const void *const valve = list.identityOf(0);
    list.sortByColumn(0);
    EXPECT_EQ(list.identityOf(1), valve) << "also without data of the dialog's";
}

TEST_F(LargeList, AllRowsAreSelectedInOneChange) {
    std::vector<int> all(many);
    std::iota(all.begin(), all.end(), 0);
    Window window(list);
    list.selectRows(all);
    EXPECT_EQ(list.GetSelectedCount(), many);
    list.selectRow(5, false);
    EXPECT_EQ(list.GetSelectedCount(), many - 1);
    EXPECT_THAT(window.changes, ElementsAre("selection 0 100000", "selection 5 1"));
    EXPECT_EQ(dialog.selections, 0) << "the dialog itself has selected them";
}

TEST_F(LargeList, KeepsItsOwnRowsForTheTimeWithoutASource) {
    list.InsertItem({{"ignored"}});
    EXPECT_EQ(list.GetItemCount(), many);
    list.selectRow(3, true);
    list.SetSource(nullptr);
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_THAT(list.selectedRows(), IsEmpty());
}

TEST_F(LargeList, ARowOutsideIsEmpty) {
    EXPECT_EQ(list.GetItemText(many, 0), "");
    EXPECT_EQ(list.GetItemText(-1, 0), "");
    EXPECT_EQ(list.GetItemImages(many).icon, -1);
    EXPECT_EQ(list.GetItemData(many), nullptr);
    list.selectRow(many, true);
    list.selectRows({-1, many});
    EXPECT_EQ(list.GetSelectedCount(), 0);
}

TEST(ListOfItsOwnRows, ReportsWhichRowsHaveChanged) {
    ListDialog dialog;
    CListCtrl &list = dialog.list;
    Window window(list);
    list.InsertItem({{"Valve", "RO"}});
    EXPECT_EQ(window.rowsBefore, 0);
    list.InsertItem({{"Pump", "RO"}});
    list.SetItemText(1, 1, "RW");
    list.SetItemText(1, 1, "RW");
    list.SetItemImages(1, {2, 12, 5});
    list.SetItemImages(1, {2, 12, 5});
    list.selectRow(1, true);
    list.sortByColumn(0);
    EXPECT_THAT(list.selectedRows(), ElementsAre(0));
    EXPECT_EQ(list.GetItemImages(0), (ItemImages{2, 12, 5}));
    list.DeleteItem(0);
    EXPECT_THAT(list.selectedRows(), IsEmpty());
    EXPECT_EQ(list.GetItemText(0, 0), "Valve");
    list.DeleteAllItems();
    EXPECT_THAT(window.changes, ElementsAre("inserted 0 1", "inserted 1 1", "changed 1 1", "changed 1 1",
                                            "selection 1 1", "reordered 0 2", "removed 0 1", "reset 0 1"));
}

TEST(ListOfItsOwnRows, ASelectionOfOneIsReportedWithTheRowThatLosesIt) {
    class One : public CDialog {
      public:
        One() : CDialog("One") {}
        CListCtrl list{*this, "list", "Units", CListCtrl::Selection::one};
    } one;
    for (int i = 0; i < 5; ++i) {
        one.list.InsertItem({});
    }
    Window window(one.list);
    one.list.selectRow(1, true);
    one.list.selectRow(3, true);
    one.list.selectRow(3, true);
    one.list.selectRows({2, 4});
    EXPECT_THAT(one.list.selectedRows(), ElementsAre(2));
    EXPECT_THAT(window.changes, ElementsAre("selection 1 1", "selection 1 3", "selection 2 2"));
}

} // namespace
