#include "orchard/messages/TerminalDialogDriver.h"

#include "CM/host/Messages.h"
#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"
#include "orchard/messages/MessageDialog.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

/// One control of each kind. Each handler records its call.
class Sample : public CDialog {
  public:
    Sample() : CDialog("Sample") {
        SetWindowText("Sample\x1b");
        ok.setDefault(true);
        hidden.ShowWindow(false);
        grey.EnableWindow(false);
        choice.AddString("slow");
        choice.AddString("fast");
        list.InsertColumn("Name");
        list.InsertColumn("Mode");
        list.InsertItem({{"Pump", "RO"}});
        list.InsertItem({{"Valve", "RW"}});
        CTreeCtrl::Item &top = tree.InsertItem("Model");
        tree.InsertItem("Station", &top).setCheck(CTreeCtrl::Check::unchecked);
    }
    std::vector<std::string> heard;

    CStatic text{*this, "text", "Choose what to do."};
    CIcon icon{*this, "icon"};
    CCheckBox box{*this, "box", "With descendants", [this] { heard.emplace_back("box"); }};                    // 1
    CChoice choice{*this, "choice", "Speed", CChoice::Style::radio, [this] { heard.emplace_back("choice"); }}; // 2
    CEdit comment{*this, "comment", "Comment", CEdit::Lines::many};                                            // 3
    CListCtrl list{*this,
                   "list",
                   "Units",
                   CListCtrl::Selection::many,
                   {[this] { heard.emplace_back("select"); },
                    [this](int column) { heard.push_back("column " + std::to_string(column)); },
                    [this](int row) { heard.push_back("activate " + std::to_string(row)); }}}; // 4
    CTreeCtrl tree{*this,
                   "tree",
                   "Model",
                   CTreeCtrl::Selection::one,
                   {{},
                    [this](CTreeCtrl::Item &item) { heard.push_back("expand " + item.text().str()); },
                    [this](CTreeCtrl::Item &item) { heard.push_back("check " + item.text().str()); },
                    [this](CTreeCtrl::Item &item) { heard.push_back("activate " + item.text().str()); }}}; // 5
    CButton hidden{*this, "hidden", "Hidden", {}};
    CButton grey{*this, "grey", "Grey", {}};
    CButton ok{*this, "ok", "OK", [this] { OnOK(); }};                 // 6
    CButton cancel{*this, "cancel", "Cancel", [this] { OnCancel(); }}; // 7
};

class Terminal : public testing::Test {
  protected:
    int type(const std::string &lines) {
        std::istringstream input(lines);
        std::ostringstream output;
        orchard::TerminalDialogDriver driver(input, output);
        const int result = dialog.DoModal(&driver);
        shown = output.str();
        return result;
    }
    Sample dialog;
    std::string shown;
};

TEST_F(Terminal, ShowsWhatCanBeUsedWithItsNumberAndTheRestWithout) {
    EXPECT_EQ(type("\n"), IDOK);
    EXPECT_EQ(shown, "--- Sample? ---\n"
                     "Choose what to do.\n"
                     "   1) [ ] With descendants\n"
                     "   2) Speed\n"
                     "      1 ( ) slow\n"
                     "      2 ( ) fast\n"
                     "   3) Comment: \n"
                     "   4) Units | Name | Mode\n"
                     "      1   | Pump | RO\n"
                     "      2   | Valve | RW\n"
                     "   5) Model\n"
                     "      1   + Model\n"
                     "   -  <Grey>\n"
                     "   6) <OK> (Enter)\n"
                     "   7) <Cancel>\n"
                     "> ");
}

TEST_F(Terminal, PressesAButtonByNumberOrText) {
    EXPECT_EQ(type("7\n"), IDCANCEL);
    EXPECT_EQ(type("can\n"), IDCANCEL);
    EXPECT_EQ(type("o\n"), IDOK);
}

TEST_F(Terminal, AButtonThatCannotBeUsedIsNotPressed) {
    EXPECT_EQ(type("Grey\nHidden\nq\n"), IDCANCEL);
    EXPECT_NE(shown.find("There is no such button here."), std::string::npos);
}

TEST_F(Terminal, SwitchesABoxOverAndBack) {
    EXPECT_EQ(type("1\n6\n"), IDOK);
    EXPECT_TRUE(dialog.box.GetCheck());
    EXPECT_EQ(type("1\n6\n"), IDOK);
    EXPECT_FALSE(dialog.box.GetCheck());
    EXPECT_EQ(dialog.heard, (std::vector<std::string>{"box", "box"}));
}

TEST_F(Terminal, ChoosesAnOption) {
    EXPECT_EQ(type("2 2\n2 3\n2\n6\n"), IDOK);
    EXPECT_EQ(dialog.choice.GetCurSel(), 1);
    EXPECT_EQ(dialog.heard, std::vector<std::string>{"choice"});
    EXPECT_NE(shown.find("2 (o) fast"), std::string::npos);
}

TEST_F(Terminal, FillsAFieldWithOneLineOrSeveral) {
    EXPECT_EQ(type("3 one line\n6\n"), IDOK);
    EXPECT_EQ(dialog.comment.text(), "one line");
    EXPECT_EQ(type("3\nfirst\n\nthird\n.\n6\n"), IDOK);
    EXPECT_EQ(dialog.comment.text(), "first\n\nthird");
}

TEST_F(Terminal, SelectsActivatesAndSortsRows) {
    EXPECT_EQ(type("4 1 2\n4 !2\n4 ^1\n4 3\n4 x\n6\n"), IDOK);
    EXPECT_EQ(dialog.list.GetSelectedCount(), 2);
    EXPECT_EQ(dialog.heard, (std::vector<std::string>{"select", "activate 1", "column 0"}));
    EXPECT_NE(shown.find("1 * | Pump | RO"), std::string::npos);
}

TEST_F(Terminal, OpensSelectsChecksAndActivatesItems) {
    EXPECT_EQ(type("5 2\n5 +1\n5 x2\n5 2\n5 !2\n6\n"), IDOK);
    EXPECT_EQ(dialog.heard, (std::vector<std::string>{"expand Model", "check Station", "activate Station"}));
    ASSERT_EQ(dialog.tree.selectedItems().size(), 1U);
    EXPECT_EQ(dialog.tree.selectedItems()[0]->text(), "Station");
    EXPECT_NE(shown.find("1   - Model"), std::string::npos);
    EXPECT_NE(shown.find("2 *     [x] Station"), std::string::npos) << shown;
}

TEST_F(Terminal, ClosesAnItem) {
    EXPECT_EQ(type("5 +1\n5 -1\n6\n"), IDOK);
    EXPECT_FALSE(dialog.tree.roots()[0]->isExpanded());
}

TEST_F(Terminal, ExplainsItself) {
    EXPECT_EQ(type("?\nq\n"), IDCANCEL);
    EXPECT_NE(shown.find("N TEXT fills a field"), std::string::npos);
}

TEST_F(Terminal, SaysWhatItDoesNotUnderstand) {
    EXPECT_EQ(type("99\n0\n-1\n6 now\nnonsense\nq\n"), IDCANCEL);
    EXPECT_NE(shown.find("There is no field 99."), std::string::npos);
    EXPECT_NE(shown.find("There is no field 0."), std::string::npos);
    EXPECT_NE(shown.find("That can't be done here."), std::string::npos);
    EXPECT_NE(shown.find("There is no such button here."), std::string::npos);
}

TEST_F(Terminal, ADialogWithoutAUsableCancelButtonCannotBeClosed) {
    dialog.cancel.EnableWindow(false);
    EXPECT_EQ(type("q\n?\n\n"), IDOK);
    EXPECT_NE(shown.find("This needs an answer."), std::string::npos);
    EXPECT_EQ(shown.find("q closes"), std::string::npos) << "what can't be done is not offered";
    EXPECT_EQ(type("q\n"), dialogNotAnswered);
    dialog.cancel.EnableWindow(true);
    dialog.cancel.ShowWindow(false);
    EXPECT_EQ(type("q\n"), dialogNotAnswered);
}

TEST_F(Terminal, TheEndOfTheInputLeavesTheDialogUnanswered) {
    EXPECT_EQ(type("1\n"), dialogNotAnswered);
    EXPECT_EQ(type("3\nlines without end"), dialogNotAnswered);
}

std::string shownBox(unsigned int flags, const std::string &typed, int result, const char *checkBox = "") {
    std::istringstream input(typed);
    std::ostringstream output;
    orchard::TerminalDialogDriver driver(input, output);
    orchard::MessageDialog box("", "Overwrite?\x1b[0m", flags, checkBox);
    EXPECT_EQ(box.DoModal(&driver), result);
    return output.str();
}

TEST(MessageBoxAtTheTerminal, IsWrittenWithItsKindAndNeedsNoAnswerWhereItOnlyInforms) {
    EXPECT_EQ(shownBox(MB_ICONHAND, "", IDOK), "Error: Overwrite??[0m\n");
    EXPECT_EQ(shownBox(MB_ICONEXCLAMATION, "", IDOK), "Warning: Overwrite??[0m\n");
    EXPECT_EQ(shownBox(MB_ICONINFORMATION, "", IDOK), "Overwrite??[0m\n");
}

TEST(MessageBoxAtTheTerminal, AsksAgainUntilTheAnswerIsUnderstood) {
    constexpr unsigned int flags = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
    EXPECT_EQ(shownBox(flags, "2\n", IDNO), "Overwrite??[0m\n   1) <Yes>\n   2) <No> (Enter)\n> ");
    shownBox(flags, "maybe\n7\ny\n", IDYES);
    shownBox(flags, "\n", IDNO);
    shownBox(flags, "maybe\n", dialogNotAnswered);
    shownBox(flags, "q\n", dialogNotAnswered);
    shownBox(MB_YESNOCANCEL, "q\n", IDCANCEL);
}

TEST(MessageBoxAtTheTerminal, CanBeTurnedOff) {
    EXPECT_EQ(shownBox(MB_ICONINFORMATION, "1\n\n", IDOK, "Don't show this again")
                  .find("   1) [ ] Don't show this again\n   2) <OK> (Enter)\n"),
              std::string("Overwrite??[0m\n").size());
}

} // namespace
