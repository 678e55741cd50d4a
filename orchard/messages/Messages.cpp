// The host's messages: boxes with the flags of the windows API, turned into messages and questions.
#include "CM/host/Messages.h"

#include "orchard/messages/HiddenMessages.h"
#include "orchard/messages/Silence.h"
#include "orchard/messages/UserInterface.h"

#include <algorithm>

namespace {

using orchard::Message;
using orchard::MessageKind;
using orchard::Question;

constexpr unsigned int buttonMask = 0xf;
constexpr unsigned int iconMask = 0xf0;
int depth = 0;

MessageKind kindOf(unsigned int flags) {
    switch (flags & iconMask) {
    case MB_ICONHAND:
        return MessageKind::error;
    case MB_ICONQUESTION:
        return MessageKind::question;
    case MB_ICONEXCLAMATION:
        return MessageKind::warning;
    default:
        return MessageKind::information;
    }
}

Question questionOf(const CString &title, const CString &text, unsigned int flags) {
    Question question;
    question.message = {kindOf(flags), title, text};
    switch (flags & buttonMask) {
    case MB_YESNO:
        question.buttons = {{IDYES, "Yes"}, {IDNO, "No"}};
        question.safeButton = IDNO;
        break;
    case MB_YESNOCANCEL:
        question.buttons = {{IDYES, "Yes"}, {IDNO, "No"}, {IDCANCEL, "Cancel"}};
        question.safeButton = IDNO;
        break;
    default:
        question.buttons = {{IDOK, "OK"}};
        question.safeButton = IDOK;
        break;
    }
    const bool second = (flags & MB_DEFBUTTON2) != 0 && question.buttons.size() > 1;
    question.defaultButton = question.buttons[second ? 1 : 0].id;
    return question;
}

} // namespace

int orchard::silenceDepth() { return depth; }

SilenceMessageObject::SilenceMessageObject(int /*flag*/) { ++depth; }
SilenceMessageObject::~SilenceMessageObject() { --depth; }

void notifyUser(const CString &text, MessageLevel /*level*/) {
    orchard::showMessage({MessageKind::information, {}, text});
}

int notifyUserAndAsk(const CString &text, unsigned int flags, int /*unused*/, MessageLevel /*level*/) {
    const Question question = questionOf({}, text, flags);
    if (question.buttons.size() == 1) {
        orchard::showMessage(question.message);
        return IDOK;
    }
    return orchard::askQuestion(question).button;
}

int OneTimeMessageBox(const CString &title, const CString &text, const CString &checkBoxText, int /*unused*/,
                      const CString &key, unsigned int flags, int /*unused*/) {
    Question question = questionOf(title, text, flags);
    const auto remembered = orchard::hiddenMessageAnswer(key.view());
    // What is asked for in this run counts before what was answered once; and the file may hold any number.
    if (remembered && !orchard::answerOfPolicy(question) &&
        std::ranges::count(question.buttons, *remembered, &Question::Button::id) != 0) {
        return *remembered;
    }
    question.checkBox = checkBoxText;
    const orchard::Reply reply = orchard::askQuestion(question);
    if (reply.doNotAskAgain) {
        orchard::hideMessage(key.view(), reply.button);
    }
    return reply.button;
}
