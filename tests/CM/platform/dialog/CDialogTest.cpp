#include "tests/CM/platform/dialog/SampleDialog.h"

#include "orchard/messages/ScriptedDialogDriver.h"

#include <gmock/gmock.h>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Dialog : public testing::Test {
  protected:
    // Runs the dialog with a script and returns its result.
    int run(orchard::DialogScript script) {
        driver.play("SampleDialog", std::move(script));
        return dialog.DoModal(&driver);
    }

    SampleDialog dialog;
    orchard::ScriptedDialogDriver driver;
};

TEST_F(Dialog, ReturnsTheResultThatEndedIt) { EXPECT_EQ(run({"select units 0", "press ok"}), IDOK); }

TEST_F(Dialog, ClosingTheWindowIsCancel) { EXPECT_EQ(run({"close"}), IDCANCEL); }

TEST_F(Dialog, ClosingIsRefusedWhereCancelCannotBePressed) {
    driver.onShown = [this](CDialog & /*shown*/) { dialog.cancel.EnableWindow(false); };
    EXPECT_EQ(run({"close"}), dialogNotAnswered);
    driver.onShown = [this](CDialog & /*shown*/) {
        dialog.cancel.EnableWindow(true);
        dialog.cancel.ShowWindow(false);
    };
    EXPECT_EQ(run({"close", "select units 0", "press ok"}), IDOK);
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: close: refused", "SampleDialog: close: refused"));
}

TEST_F(Dialog, TheSafeAnswerIsNoElseCancel) {
    EXPECT_EQ(dialog.safeButton(), &dialog.cancel);
    CButton no(dialog, "no", "No", {});
    EXPECT_EQ(dialog.safeButton(), &no);
    no.EnableWindow(false);
    dialog.cancel.EnableWindow(false);
    EXPECT_EQ(dialog.safeButton(), nullptr) << "the dialog has other buttons still";
}

TEST(Notice, HasOneButtonWhichClosingPresses) {
    class Box : public CDialog {
      public:
        Box() : CDialog("Box") {}
        CStatic text{*this, "text", "Done."};
        CCheckBox again{*this, "again", "Don't show this again"};
        CButton ok{*this, "ok", "OK", [this] { OnOK(); }};
        CEdit name{*this, "name", "Name"};
    } box;
    EXPECT_EQ(box.onlyButton(), nullptr) << "there is a name to be filled in";
    box.name.ShowWindow(false);
    EXPECT_EQ(box.onlyButton(), &box.ok);
    orchard::ScriptedDialogDriver driver;
    driver.play("Box", {"close"});
    EXPECT_EQ(box.DoModal(&driver), IDOK);
}

TEST_F(Dialog, SaysItsTextsAndItsIcon) {
    CStatic more(dialog, "more", "Then press OK.");
    CStatic hidden(dialog, "hidden", "Nobody reads this.");
    hidden.ShowWindow(false);
    EXPECT_EQ(dialog.prompt(), "Choose the units to check out Then press OK.");
    EXPECT_EQ(dialog.icon(), CIcon::Kind::none);
    dialog.warning.SetIcon(CIcon::Kind::warning);
    EXPECT_EQ(dialog.icon(), CIcon::Kind::warning);
}

TEST_F(Dialog, AControlCountsItsChangesAndNothingElse) {
    const auto counts = [](CControl &control, const std::function<void()> &change) {
        const auto before = control.revision();
        change();
        return control.revision() - before;
    };
    EXPECT_EQ(counts(dialog.heading, [this] { dialog.heading.setCaption("New"); }), 1U);
    EXPECT_EQ(counts(dialog.heading, [this] { dialog.heading.setCaption("New"); }), 0U);
    EXPECT_EQ(counts(dialog.ok, [this] { dialog.ok.setToolTip("Begins"); }), 1U);
    EXPECT_EQ(counts(dialog.ok, [this] { dialog.ok.EnableWindow(false); }), 1U);
    EXPECT_EQ(counts(dialog.ok, [this] { dialog.ok.ShowWindow(false); }), 1U);
    EXPECT_EQ(counts(dialog.ok, [this] { dialog.ok.setDefault(true); }), 1U);
    EXPECT_EQ(counts(dialog.ok, [this] { dialog.ok.setBitmap("check"); }), 1U);
    EXPECT_EQ(counts(dialog.warning, [this] { dialog.warning.SetIcon(CIcon::Kind::error); }), 1U);
    EXPECT_EQ(counts(dialog.lock, [this] { dialog.lock.SetCheck(true); }), 1U);
    EXPECT_EQ(counts(dialog.method, [this] { dialog.method.AddString("date"); }), 1U);
    EXPECT_EQ(counts(dialog.method, [this] { dialog.method.SetCurSel(0); }), 1U);
    EXPECT_EQ(counts(dialog.method, [this] { dialog.method.enableOption(0, false); }), 1U);
    EXPECT_EQ(counts(dialog.method, [this] { dialog.method.ResetContent(); }), 1U);
    EXPECT_EQ(counts(dialog.comment, [this] { dialog.comment.SetWindowText("urgent"); }), 1U);
    EXPECT_EQ(counts(dialog.comment, [this] { dialog.comment.SetReadOnly(true); }), 1U);
    EXPECT_EQ(counts(dialog.units, [this] { dialog.units.setSortMark(0, true); }), 2U);
    EXPECT_EQ(counts(dialog.units, [this] { dialog.units.InsertItem({{"Pump"}}); }), 1U);
    EXPECT_EQ(counts(dialog.places, [this] { dialog.places.InsertItem("Plant"); }), 1U);
    EXPECT_EQ(counts(dialog.label, [] {}), 0U);
}

TEST_F(Dialog, AnEventIsAChangeOfTheControl) {
    const auto before = dialog.lock.revision();
    run({"check lock", "check lock", "edit comment now", "close"});
    EXPECT_EQ(dialog.lock.revision(), before + 1);
}

TEST_F(Dialog, IsUnansweredWhenTheDriverHasNobodyToAskAnyMore) {
    EXPECT_EQ(run({"select units 0"}), dialogNotAnswered);
    EXPECT_FALSE(dialog.isOpen());
}

TEST_F(Dialog, IsUnansweredWithoutADriverAndNotInitialised) {
    EXPECT_EQ(dialog.DoModal(nullptr), dialogNotAnswered);
    EXPECT_EQ(dialog.units.GetItemCount(), 0);
}

TEST_F(Dialog, IsUnansweredWhenTheDriverReturnsFromAnOpenDialogWithoutSayingSo) {
    class Absent : public platform::DialogDriver {
        bool run(CDialog & /*dialog*/) override { return true; }
    } absent;
    EXPECT_EQ(dialog.DoModal(&absent), dialogNotAnswered);
}

TEST_F(Dialog, IsNotShownWhenItsStartEndsIt) {
    dialog.endAtOnce = true;
    EXPECT_EQ(run({"close"}), 42);
    EXPECT_THAT(driver.shown(), IsEmpty());
}

TEST_F(Dialog, IsClosedAgainWhenAHandlerThrows) {
    dialog.throwOnInit = true;
    EXPECT_THROW(run({"close"}), std::runtime_error);
    EXPECT_FALSE(dialog.isOpen());
}

TEST_F(Dialog, CanRunAgainAndKeepsItsFields) {
    EXPECT_EQ(run({"check lock", "close"}), IDCANCEL);
    EXPECT_EQ(run({"edit comment urgent", "select units 1", "press ok"}), IDOK);
    EXPECT_TRUE(dialog.lock.GetCheck());
}

TEST_F(Dialog, ListsItsControlsInTheOrderOfDeclaration) {
    std::vector<CString> ids;
    for (const CControl *control : dialog.controls()) {
        ids.push_back(control->id());
    }
    EXPECT_THAT(ids, ElementsAre("heading", "warning", "units", "places", "lock", "method", "archive", "label",
                                 "comment", "ok", "cancel", "advanced"));
    EXPECT_EQ(dialog.control("label"), &dialog.label);
    EXPECT_EQ(dialog.control("Label"), nullptr);
}

TEST_F(Dialog, TakesNoEventsWhileItIsClosed) {
    EXPECT_FALSE(dialog.cancel.press());
    EXPECT_FALSE(dialog.close());
    EXPECT_FALSE(dialog.lock.enter(true));
    EXPECT_FALSE(dialog.lock.GetCheck());
}

TEST_F(Dialog, ADisabledButtonCannotBePressed) {
    EXPECT_EQ(run({"press ok", "close"}), IDCANCEL);
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: press ok: refused"));
}

TEST_F(Dialog, AHiddenControlTakesNoEvents) {
    run({"edit label early", "choose method label", "edit label R1", "close"});
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: edit label early: refused"));
    EXPECT_EQ(dialog.label.text(), "R1");
}

TEST_F(Dialog, ABoxSwitchesAnotherControl) {
    run({"edit comment a", "check lock", "edit comment b", "uncheck lock", "edit comment c", "close"});
    EXPECT_EQ(dialog.comment.text(), "b");
    EXPECT_EQ(dialog.heading.caption(), "Reason: b");
    EXPECT_THAT(driver.problems(),
                ElementsAre("SampleDialog: edit comment a: refused", "SampleDialog: edit comment c: refused"));
}

TEST_F(Dialog, MayRefuseToEnd) {
    EXPECT_EQ(run({"select units 0", "check lock", "press ok"}), dialogNotAnswered);
    EXPECT_EQ(dialog.focus(), &dialog.comment);
    EXPECT_TRUE(dialog.comment.hasFocus());
}

TEST_F(Dialog, AButtonWithoutAHandlerDoesNothing) {
    EXPECT_EQ(run({"press advanced", "close"}), IDCANCEL);
    EXPECT_THAT(driver.problems(), IsEmpty());
}

TEST_F(Dialog, SettersCallNoHandler) {
    dialog.lock.SetCheck(true);
    dialog.comment.SetWindowText("set");
    EXPECT_TRUE(dialog.comment.isEnabled());
    EXPECT_EQ(dialog.heading.caption(), "Choose the units to check out");
}

TEST_F(Dialog, OneLineOfTextEndsAtItsLineEndAndManyLinesAreKept) {
    run({"check lock", "choose method label", "edit label R1\nR2", "edit comment one\ntwo", "close"});
    EXPECT_EQ(dialog.label.text(), "R1");
    EXPECT_EQ(dialog.comment.text(), "one\ntwo");
}

TEST_F(Dialog, AReadOnlyTextTakesNone) {
    dialog.comment.SetReadOnly(true);
    run({"check lock", "edit comment no", "close"});
    EXPECT_EQ(dialog.comment.text(), "");
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: edit comment no: refused"));
}

TEST_F(Dialog, AChoiceRefusesOptionsThatAreDisabledOrNotThere) {
    run({"choose archive file", "choose archive tape", "choose archive directory", "close"});
    EXPECT_EQ(dialog.archive.GetCurSel(), 0);
    EXPECT_THAT(driver.problems(), ElementsAre("SampleDialog: choose archive file: refused",
                                               "SampleDialog: choose archive tape: refused"));
}

TEST_F(Dialog, AChoiceOutsideTheOptionsIsNone) {
    run({"close"});
    dialog.method.SetCurSel(2);
    EXPECT_EQ(dialog.method.GetCurSel(), -1);
}

TEST_F(Dialog, DialogsMayRunInsideAHandlerWithTheSameDriver) {
    SampleDialog inner;
    driver.play("SampleDialog", {"select units 0", "press ok"});
    driver.play("SampleDialog", {"select units 1", "press ok"});
    int innerResult = 0;
    driver.onShown = [&](CDialog &shown) {
        if (&shown == &dialog) {
            innerResult = inner.DoModal(&driver);
        }
    };
    EXPECT_EQ(dialog.DoModal(&driver), IDOK);
    EXPECT_EQ(innerResult, IDOK);
    EXPECT_THAT(driver.shown(), ElementsAre("SampleDialog", "SampleDialog"));
}

TEST_F(Dialog, ShowsWhatItsStartHasSet) {
    driver.onShown = [](CDialog &shown) {
        EXPECT_EQ(shown.title(), "Sample");
        EXPECT_FALSE(shown.control("label")->isVisible());
        EXPECT_EQ(dynamic_cast<const CIcon &>(*shown.control("warning")).icon(), CIcon::Kind::warning);
    };
    run({"close"});
    EXPECT_EQ(driver.shown().size(), 1U);
}

} // namespace
