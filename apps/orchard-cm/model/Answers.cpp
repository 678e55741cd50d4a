#include "apps/orchard-cm/model/Answers.h"

#include "apps/orchard-cm/base/Interrupt.h"

#include <initializer_list>

namespace orchard_cm {

namespace {

Output::Kind kindOf(CIcon::Kind icon) {
    switch (icon) {
    case CIcon::Kind::error:
        return Output::Kind::error;
    case CIcon::Kind::warning:
        return Output::Kind::warning;
    case CIcon::Kind::question:
        return Output::Kind::question;
    case CIcon::Kind::information:
    case CIcon::Kind::none:
        break;
    }
    return Output::Kind::information;
}

/// Returns the first of these buttons that the dialog has.
CButton *firstOf(const CDialog &dialog, std::initializer_list<const char *> ids) {
    for (const char *const id : ids) {
        if (CButton *const button = dialog.button(id)) {
            return button;
        }
    }
    return nullptr;
}

/// Returns the button that the options press, or null if somebody has to be asked.
CButton *pressedBy(Answer answer, const CDialog &dialog) {
    switch (answer) {
    case Answer::yes:
        return firstOf(dialog, {"yes", "ok"});
    case Answer::yesToAll:
        return firstOf(dialog, {"yesToAll", "yes"});
    case Answer::no:
        return firstOf(dialog, {"no", "cancel"});
    case Answer::ask:
        break;
    }
    return nullptr;
}

} // namespace

bool AnsweringDriver::answersInAdvance(const CDialog &dialog) const {
    return dialog.onlyButton() == nullptr && pressedBy(answer_, dialog) != nullptr;
}

void AnsweringDriver::show(const CDialog &message) {
    if (!isInterrupted()) { // failures after Ctrl-C are its consequence, which the program reports once at the end
        output_.message(kindOf(message.icon()), message.prompt().str());
    }
}

void AnsweringDriver::report(const CDialog &question, const CButton &answer, const std::string &why) {
    output_.message(Output::Kind::question, question.prompt().str() + " [" + answer.caption().str() + why + "]");
}

bool AnsweringDriver::run(CDialog &dialog) {
    if (CButton *const button = dialog.onlyButton()) {
        show(dialog);
        return button->press() && !dialog.isOpen();
    }
    output_.status().clear();
    // After Ctrl-C the answer of the options is not given either, because a Yes would overwrite a file for
    // nothing.
    if (answer_ != Answer::ask && !isInterrupted()) {
        CButton *const button = pressedBy(answer_, dialog);
        if (button == nullptr) {
            return false;
        }
        report(dialog, *button, {});
        return button->press() && !dialog.isOpen();
    }
    if (terminal_ != nullptr && !isInterrupted() && terminal_->run(dialog)) {
        return true;
    }
    CButton *const button = dialog.safeButton();
    if (button == nullptr) {
        return false;
    }
    if (!isInterrupted()) {
        report(dialog, *button,
               terminal_ != nullptr ? ": there was no answer"
                                    : ": there is nobody to ask; answer with --yes, --no or --yes-to-all");
    }
    return button->press() && !dialog.isOpen();
}

} // namespace orchard_cm
