#include "apps/orchard-cm/model/Answers.h"

#include "CM/platform/dialog/CDialog.h"
#include "apps/orchard-cm/base/Interrupt.h"

#include <algorithm>
#include <array>

namespace orchard_cm {

namespace {

/// The texts that a dialog shows, joined.
class Texts final : public ControlVisitor {
  public:
    static std::string of(const CDialog &dialog) {
        Texts texts;
        for (CControl *const control : dialog.controls()) {
            if (control->isVisible()) {
                control->accept(texts);
            }
        }
        return texts.text_;
    }

  private:
    void visit(CStatic &control) override {
        text_ += (text_.empty() || control.caption().IsEmpty() ? "" : " ") + control.caption().str();
    }
    void visit(CIcon & /*control*/) override {}
    void visit(CButton & /*control*/) override {}
    void visit(CCheckBox & /*control*/) override {}
    void visit(CChoice & /*control*/) override {}
    void visit(CEdit & /*control*/) override {}
    void visit(CListCtrl & /*control*/) override {}
    void visit(CTreeCtrl & /*control*/) override {}
    std::string text_;
};

/// The buttons that stand for an answer, the first that a dialog has is pressed.
std::array<const char *, 2> buttonsOf(Answer answer) {
    switch (answer) {
    case Answer::yes:
        return {"yes", "ok"};
    case Answer::yesToAll:
        return {"yesToAll", "yes"};
    case Answer::no:
    case Answer::ask:
        break;
    }
    return {"no", "cancel"};
}

/// Presses one of the buttons; its id, or null if the dialog has neither.
const char *pressOne(CDialog &dialog, const std::array<const char *, 2> &ids) {
    for (const char *const id : ids) {
        if (auto *const button = dynamic_cast<CButton *>(dialog.control(id));
            button != nullptr && button->press()) {
            return id;
        }
    }
    return nullptr;
}

} // namespace

bool AnsweringDriver::run(CDialog &dialog) {
    const std::string text = Texts::of(dialog);
    journal_.question(text);
    output_.status().clear();
    if (answer_ == Answer::ask) {
        if (terminal_ != nullptr && !isInterrupted() && terminal_->run(dialog)) {
            return true;
        }
        if (!isInterrupted()) {
            output_.message(Output::Kind::question,
                            text + (terminal_ != nullptr ? " [No: there was no answer]"
                                                         : " [No: there is nobody to ask; --yes, --no or "
                                                           "--yes-to-all give an answer]"));
        }
        return pressOne(dialog, buttonsOf(Answer::no)) != nullptr && !dialog.isOpen();
    }
    const char *const pressed = pressOne(dialog, buttonsOf(answer_));
    if (pressed != nullptr) {
        output_.message(Output::Kind::question, text + " [" + pressed + "]");
    }
    return pressed != nullptr && !dialog.isOpen();
}

} // namespace orchard_cm
