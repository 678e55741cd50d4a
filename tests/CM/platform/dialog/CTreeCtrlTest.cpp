#include "tests/CM/platform/dialog/SampleDialog.h"

#include "orchard/messages/ScriptedDialogDriver.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TreeCtrl : public testing::Test {
  protected:
    void run(orchard::DialogScript script) {
        driver.play("SampleDialog", std::move(script));
        static_cast<void>(dialog.DoModal(&driver));
    }

    SampleDialog dialog;
    orchard::ScriptedDialogDriver driver;
};

TEST_F(TreeCtrl, OpeningABranchLetsTheDialogFillItOnce) {
    run({"expand places Plant", "collapse places Plant", "expand places Plant", "close"});
    const auto &plant = *dialog.places.find("Plant");
    EXPECT_TRUE(plant.isExpanded());
    EXPECT_EQ(plant.children().size(), 2U);
    EXPECT_EQ(dialog.placesAdded, 1);
    EXPECT_EQ(dialog.places.find("Cooling")->parent(), &plant);
}

TEST_F(TreeCtrl, AnItemWithoutChildrenCannotBeOpened) {
    run({"expand places Plant", "expand places Notes", "close"});
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: expand places Notes: refused"));
}

TEST_F(TreeCtrl, AnItemInAClosedBranchTakesNoEvents) {
    run({"expand places Plant", "collapse places Plant", "select places Cooling", "check places Cooling",
         "activate places Cooling", "close"});
    EXPECT_THAT(dialog.places.selectedItems(), IsEmpty());
    EXPECT_EQ(dialog.places.find("Cooling")->check(), CTreeCtrl::Check::unchecked);
    EXPECT_EQ(driver.problems().size(), 3U);
}

TEST_F(TreeCtrl, ABoxSwitchesThoseBelowAndAbove) {
    run({"expand places Plant", "check places Plant", "close"});
    EXPECT_EQ(dialog.places.find("Cooling")->check(), CTreeCtrl::Check::checked);
    run({"expand places Plant", "check places Plant", "uncheck places Cooling", "close"});
    EXPECT_EQ(dialog.places.find("Plant")->check(), CTreeCtrl::Check::partly);
}

TEST_F(TreeCtrl, AnItemWithoutABoxCannotBeChecked) {
    run({"expand places Plant", "check places Notes", "close"});
    EXPECT_EQ(dialog.places.find("Notes")->check(), CTreeCtrl::Check::noBox);
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: check places Notes: refused"));
}

TEST_F(TreeCtrl, ASelectionOfOneRefusesTwoAndGivesWayToTheNext) {
    run({"expand places Plant", "select places Plant", "select places Cooling|Notes", "select places Notes",
         "close"});
    EXPECT_THAT(dialog.places.selectedItems(), ElementsAre(dialog.places.find("Notes")));
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: select places Cooling|Notes: refused"));
    dialog.places.selectItem(*dialog.places.find("Plant"), true);
    EXPECT_THAT(dialog.places.selectedItems(), ElementsAre(dialog.places.find("Plant")));
}

TEST_F(TreeCtrl, ListsSelectedItemsOwnersFirstAndSiblingsInOrder) {
    class Many : public CDialog {
      public:
        Many() : CDialog("Many") {}
        int changes = 0;
        CTreeCtrl tree{*this, "tree", "", CTreeCtrl::Selection::many, {[this] { ++changes; }, {}, {}, {}}};
        CButton cancel{*this, "cancel", "Cancel", [this] { OnCancel(); }};
    } many;
    auto &first = many.tree.InsertItem("first");
    auto &second = many.tree.InsertItem("second");
    auto &inner = many.tree.InsertItem("inner", &first);
    first.setExpanded(true);
    driver.play("Many", {"select tree second|inner|first", "select tree first|inner|second", "close"});
    EXPECT_EQ(many.DoModal(&driver), IDCANCEL);
    EXPECT_THAT(many.tree.selectedItems(), ElementsAre(&first, &inner, &second));
    EXPECT_EQ(many.changes, 1) << "the same selection again is no change";
}

TEST_F(TreeCtrl, DeletingAnItemDeletesWhatIsBelow) {
    run({"expand places Plant", "close"});
    dialog.places.DeleteItem(*dialog.places.find("Notes"));
    EXPECT_EQ(dialog.places.find("Notes"), nullptr);
    dialog.places.DeleteItem(*dialog.places.find("Plant"));
    EXPECT_EQ(dialog.places.find("Cooling"), nullptr);
    EXPECT_THAT(dialog.places.roots(), IsEmpty());
}

/// Records each change as "KIND ITEM INDEX".
class Watcher final : public ItemObserver {
  public:
    std::vector<std::string> before;
    std::vector<std::string> after;

  private:
    static std::string text(const ItemChange &change) {
        constexpr const char *kinds[] = {"changed", "expanded", "inserted", "removed", "reset", "selection"};
        return std::string(kinds[static_cast<int>(change.kind)]) + " " +
               (change.item == nullptr ? "-" : change.item->text().str()) + " " + std::to_string(change.index);
    }
    void beforeChange(const ItemChange &change) override { before.push_back(text(change)); }
    void afterChange(const ItemChange &change) override { after.push_back(text(change)); }
};

TEST_F(TreeCtrl, ReportsWhichItemsHaveChanged) {
    auto &plant = dialog.places.InsertItem("Plant");
    Watcher watcher;
    dialog.places.setObserver(&watcher);
    auto &pump = dialog.places.InsertItem("Pump", &plant);
    auto &valve = dialog.places.InsertItem("Valve", &plant);
    pump.setImages({3, 12, 1});
    pump.setImages({3, 12, 1});
    plant.setExpanded(true);
    dialog.places.selectItem(valve, true);
    dialog.places.DeleteItem(pump);
    EXPECT_EQ(valve.index(), 0);
    dialog.places.DeleteAllItems();
    EXPECT_THAT(watcher.after, ElementsAre("inserted Plant 0", "inserted Plant 1", "changed Pump 0",
                                           "expanded Plant 0", "selection - 0", "removed Plant 0", "reset - 0"));
    EXPECT_THAT(watcher.before, ElementsAre("inserted Plant 0", "inserted Plant 1", "expanded Plant 0",
                                            "selection - 0", "removed Plant 0", "reset - 0"));
    EXPECT_EQ(dialog.places.selectedCount(), 0);
}

TEST_F(TreeCtrl, ADeletedBranchIsNoLongerSelected) {
    auto &plant = dialog.places.InsertItem("Plant");
    dialog.places.selectItem(dialog.places.InsertItem("Pump", &plant), true);
    EXPECT_EQ(dialog.places.selectedCount(), 1);
    dialog.places.DeleteItem(plant);
    EXPECT_EQ(dialog.places.selectedCount(), 0);
}

} // namespace
