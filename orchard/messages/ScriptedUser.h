// A user that plays answers given in advance and keeps what was shown: for tests and unattended programs.
#pragma once

#include "orchard/messages/UserInterface.h"

#include <deque>

namespace orchard {

class ORCHARD_API ScriptedUser : public UserInterface {
  public:
    /// The answers to the questions to come, in order. When they are used up there is nobody to answer.
    void answer(Reply reply) { replies_.push_back(reply); }

    void show(const Message &message) override { messages_.push_back(message); }
    std::optional<Reply> ask(const Question &question) override {
        questions_.push_back(question);
        if (replies_.empty()) {
            return std::nullopt;
        }
        const Reply reply = replies_.front();
        replies_.pop_front();
        return reply;
    }

    [[nodiscard]] const std::vector<Message> &messages() const { return messages_; }
    [[nodiscard]] const std::vector<Question> &questions() const { return questions_; }

  private:
    std::deque<Reply> replies_;
    std::vector<Message> messages_;
    std::vector<Question> questions_;
};

} // namespace orchard
