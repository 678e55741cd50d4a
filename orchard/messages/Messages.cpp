// Shows the host's messages: boxes with the flags of the windows API, run as dialogs.
#include "CM/host/Messages.h"

#include "CM/host/LogTrace.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/HiddenMessages.h"
#include "orchard/messages/MessageDialog.h"

#include <iostream>
#include <optional>

namespace {

using orchard::MessageDialog;

constexpr unsigned int iconMask = 0xf0;
int silenceDepth = 0;

void log(const CString &text) { LogTrace::Log(LogTrace::Log::cm).Min("orchard/messages", 0, text); }

void show(const CString &title, const CString &text, unsigned int flags) {
    log(text);
    if (silenceDepth > 0) {
        return;
    }
    MessageDialog message(title, text, flags & iconMask);
    if (message.DoModal(orchard::dialogDriver()) == dialogNotAnswered) {
        std::cerr << text << '\n';
    }
}

/// Returns the user's answer, or no value if nobody answers.
std::optional<int> answerOf(MessageDialog &question) {
    const int given = silenceDepth > 0 ? dialogNotAnswered : question.DoModal(orchard::dialogDriver());
    if (given == dialogNotAnswered) {
        return std::nullopt;
    }
    log(question.prompt() + " [" + question.captionOf(given) + "]");
    return given;
}

/// Returns the safe answer, and shows the user that it was given.
int safeAnswer(const MessageDialog &question, unsigned int flags) {
    const int safe = question.safeAnswer();
    show(question.title(), question.prompt() + " [" + question.captionOf(safe) + ": there is nobody to ask]",
         flags);
    return safe;
}

} // namespace

SilenceMessageObject::SilenceMessageObject(int /*flag*/) { ++silenceDepth; }
SilenceMessageObject::~SilenceMessageObject() { --silenceDepth; }

void notifyUser(const CString &text, MessageLevel /*level*/) { show({}, text, 0); }

int notifyUserAndAsk(const CString &text, unsigned int flags, int /*unused*/, MessageLevel /*level*/) {
    MessageDialog box({}, text, flags);
    if (box.onlyButton() != nullptr) {
        show({}, text, flags);
        return IDOK;
    }
    const auto answer = answerOf(box);
    return answer ? *answer : safeAnswer(box, flags);
}

int OneTimeMessageBox(const CString &title, const CString &text, const CString &checkBoxText, int /*unused*/,
                      const CString &key, unsigned int flags, int /*unused*/) {
    MessageDialog box(title, text, flags, checkBoxText);
    const platform::DialogDriver *const driver = orchard::dialogDriver();
    const auto remembered = orchard::hiddenMessageAnswer(key.view());
    // The options of this run take precedence over a remembered answer. The file may contain any number.
    if (remembered && (driver == nullptr || !driver->answersInAdvance(box)) &&
        !box.captionOf(*remembered).IsEmpty()) {
        return *remembered;
    }
    const auto answer = answerOf(box);
    if (!answer) {
        return safeAnswer(box, flags); // not remembered, even if the user checked the box and then left
    }
    if (box.isTurnedOff()) {
        orchard::hideMessage(key.view(), *answer);
    }
    return *answer;
}
