// The user at a terminal: messages as text, questions with numbered buttons.
#pragma once

#include "orchard/messages/UserInterface.h"

#include <istream>
#include <ostream>

namespace orchard {

class ORCHARD_API TerminalUser : public UserInterface {
  public:
    /// Both streams must outlive the object. Control characters of a text, which may come from a tool, are not
    /// passed on to the terminal.
    TerminalUser(std::istream &input, std::ostream &output) : input_(input), output_(output) {}

    void show(const Message &message) override;
    /// Asks until an answer can be understood: the number or the first letters of a button, or nothing for the
    /// default one. No value at the end of the input.
    std::optional<Reply> ask(const Question &question) override;

  private:
    void write(const Message &message);

    std::istream &input_;
    std::ostream &output_;
};

} // namespace orchard
