// Tests the tables of dialogs: cells, the order of records, and texts that are too long for their column.
#include "CM/host/DialogHelpers.h"
#include "CM/platform/dialog/CDialog.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

class TestDialog : public CDialog {
  public:
    TestDialog() : CDialog("test") {}
};

class Table : public testing::Test {
  protected:
    TestDialog dialog;
    CListCtrl list{dialog, "list", "Units", CListCtrl::Selection::many};
};

TEST_F(Table, ColumnsAreAppendedWithTheirAlignment) {
    EXPECT_EQ(AddColumn(list, "Name", CListCtrl::Align::left), 0);
    EXPECT_EQ(AddColumn(list, "Size", CListCtrl::Align::right), 1);
    EXPECT_EQ(list.columns()[1].title, "Size");
    EXPECT_EQ(list.columns()[1].align, CListCtrl::Align::right);
}

TEST_F(Table, ItemsAppendTheRowBehindTheLastAndFillTheOthers) {
    AddColumn(list, "Name", CListCtrl::Align::left);
    AddColumn(list, "Type", CListCtrl::Align::left);
    EXPECT_EQ(AddItem(list, 0, 0, "Pump", 2), 0);
    EXPECT_EQ(AddItem(list, 0, 1, "Class", 7), 0);
    EXPECT_EQ(AddItem(list, 1, 0, "Valve", -1), 1);
    EXPECT_EQ(list.GetItemCount(), 2);
    EXPECT_EQ(list.GetItemText(0, 0), "Pump");
    EXPECT_EQ(list.GetItemText(0, 1), "Class");
    EXPECT_EQ(list.GetItemImages(0).icon, 2) << "column 0 alone brings the icon";
    EXPECT_EQ(list.GetItemImages(1).icon, -1);
}

TEST_F(Table, ItemsOutsideTheTableChangeNothing) {
    AddColumn(list, "Name", CListCtrl::Align::left);
    EXPECT_EQ(AddItem(list, 1, 0, "Pump", -1), -1);
    EXPECT_EQ(AddItem(list, -1, 0, "Pump", -1), -1);
    EXPECT_EQ(AddItem(list, 0, 1, "Pump", -1), -1);
    EXPECT_EQ(AddItem(list, 0, -1, "Pump", -1), -1);
    EXPECT_EQ(list.GetItemCount(), 0);
}

/// A record as the dialogs have them: texts to sort by, then the object that the record describes.
struct Record {
    Record(const char *name, const char *type) : words{const_cast<char *>(name), const_cast<char *>(type)} {}
    std::array<void *, 2> words;
};

std::vector<std::string> namesOf(const CSorter::Records &records) {
    std::vector<std::string> names;
    for (void **const record : records) {
        names.emplace_back(record[0] == nullptr ? "-" : static_cast<const char *>(record[0]));
    }
    return names;
}

TEST(Sorter, OrdersByTheTextAtTheOffsetAndKeepsTheOrderOfEqualOnes) {
    Record valve("Valve", "Class");
    Record drives("Drives", "Subsystem");
    Record pump("Pump", "Class");
    CSorter::Records records;
    for (Record *record : {&valve, &drives, &pump}) {
        records.AddTail(record->words.data());
    }
    EXPECT_THAT(namesOf(CSorter::sort(records, 0, std::strcmp)), ElementsAre("Drives", "Pump", "Valve"));
    EXPECT_THAT(namesOf(CSorter::sort(records, sizeof(void *), std::strcmp)),
                ElementsAre("Valve", "Pump", "Drives"));
    EXPECT_THAT(namesOf(records), ElementsAre("Valve", "Drives", "Pump")) << "the caller's list stays";
}

TEST(Sorter, OrdersAsTheComparisonSays) {
    Record small("a", "");
    Record large("b", "");
    CSorter::Records records;
    records.AddTail(small.words.data());
    records.AddTail(large.words.data());
    const auto reversed = [](const char *left, const char *right) { return std::strcmp(right, left); };
    EXPECT_THAT(namesOf(CSorter::sort(records, 0, reversed)), ElementsAre("b", "a"));
}

TEST(Sorter, TakesANullTextForAnEmptyOneAndAnEmptyListAsItIs) {
    Record pump("Pump", "");
    Record nameless(nullptr, "");
    CSorter::Records records;
    EXPECT_TRUE(CSorter::sort(records, 0, std::strcmp).IsEmpty());
    records.AddTail(pump.words.data());
    records.AddTail(nameless.words.data());
    EXPECT_THAT(namesOf(CSorter::sort(records, 0, std::strcmp)), ElementsAre("-", "Pump"));
}

int bytes(std::string_view text) { return static_cast<int>(text.size()); }

TEST(ShortString, StaysAsItIsIfItFitsIntoTheWidthLessTheMargin) {
    EXPECT_EQ(MakeShortString(bytes, "Pump", 6, 2), "Pump");
    EXPECT_EQ(MakeShortString(bytes, "", 0, 0), "");
}

TEST(ShortString, KeepsAsMuchOfTheBeginningAsFitsInFrontOfThreeDots) {
    EXPECT_EQ(MakeShortString(bytes, "PumpController", 10, 2), "PumpC...");
    EXPECT_EQ(MakeShortString(bytes, "PumpController", 10, 6), "P...");
    EXPECT_EQ(MakeShortString(bytes, "PumpController", 15, 2), "PumpContro...");
}

TEST(ShortString, IsThreeDotsAloneWhereNothingFits) {
    EXPECT_EQ(MakeShortString(bytes, "Pump", 3, 0), "...");
    EXPECT_EQ(MakeShortString(bytes, "Pump", 0, 6), "...");
}

TEST(ShortString, CutsNoCharacterInTwo) {
    EXPECT_EQ(MakeShortString(bytes, "M\u00fcller", 5, 0), "M...");
    EXPECT_EQ(MakeShortString(bytes, "M\u00fcller", 6, 0), "M\u00fc...");
}

TEST(ShortString, MeasuresALongTextAFewTimesOnly) {
    int measured = 0;
    const auto counting = [&measured](std::string_view text) {
        ++measured;
        return bytes(text);
    };
    const CString text(std::string(100000, 'x'));
    EXPECT_EQ(MakeShortString(counting, text, 50, 0).GetLength(), 50);
    EXPECT_LT(measured, 40);
}

TEST(MultipleSelection, CountsTheSelectedItems) {
    TestDialog dialog;
    CTreeCtrlMultSel tree(dialog, "tree", "Units");
    CTreeCtrl::Item &drives = tree.InsertItem("Drives");
    CTreeCtrl::Item &pump = tree.InsertItem("Pump", &drives);
    EXPECT_EQ(tree.GetSelectedCount(), 0);
    tree.selectItem(drives, true);
    tree.selectItem(pump, true);
    tree.InvalidateSelectionCountCaching();
    EXPECT_EQ(tree.GetSelectedCount(0), 2);
}

} // namespace
