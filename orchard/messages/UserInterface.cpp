#include "orchard/messages/UserInterface.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "orchard/messages/Silence.h"

#include <algorithm>
#include <iostream>

namespace orchard {
namespace {

struct Setting {
    UserInterface *user = nullptr;
    AnswerPolicy policy = AnswerPolicy::ask;
};

Setting &setting() {
    static Setting theSetting;
    return theSetting;
}

const Question::Button *buttonWith(const Question &question, int id) {
    const auto found = std::ranges::find(question.buttons, id, &Question::Button::id);
    return found == question.buttons.end() ? nullptr : &*found;
}

/// The answer that the policy gives, or null.
const Question::Button *answerOf(AnswerPolicy policy, const Question &question) {
    switch (policy) {
    case AnswerPolicy::yes:
        return buttonWith(question, IDYES);
    case AnswerPolicy::no:
        return buttonWith(question, IDNO);
    case AnswerPolicy::ask:
        break;
    }
    return nullptr;
}

void log(const CString &text) { LogTrace::Log(LogTrace::Log::cm).Min("orchard/messages", 0, text); }

void deliver(const Message &message) {
    if (silenceDepth() > 0) {
        return;
    }
    if (setting().user != nullptr) {
        setting().user->show(message);
    } else {
        std::cerr << message.text << '\n';
    }
}

Reply answerUnasked(const Question &question, int button, const char *why) {
    const Question::Button *const answer = buttonWith(question, button);
    const CString text =
        question.message.text + " [" + (answer == nullptr ? CString() : answer->caption) + why + "]";
    log(text);
    deliver({question.message.kind, question.message.title, text});
    return {button, false};
}

} // namespace

void setUserInterface(UserInterface *user) { setting().user = user; }
void setAnswerPolicy(AnswerPolicy policy) { setting().policy = policy; }

std::optional<int> answerOfPolicy(const Question &question) {
    const Question::Button *const answer = answerOf(setting().policy, question);
    return answer == nullptr ? std::nullopt : std::optional(answer->id);
}

void showMessage(const Message &message) {
    log(message.text);
    deliver(message);
}

Reply askQuestion(const Question &question) {
    if (const Question::Button *const answer = answerOf(setting().policy, question)) {
        return answerUnasked(question, answer->id, "");
    }
    if (silenceDepth() == 0 && setting().user != nullptr) {
        if (const auto reply = setting().user->ask(question);
            reply && buttonWith(question, reply->button) != nullptr) {
            log(question.message.text + " [" + buttonWith(question, reply->button)->caption + "]");
            return *reply;
        }
    }
    return answerUnasked(question, question.safeButton, ": there is nobody to ask");
}

} // namespace orchard
