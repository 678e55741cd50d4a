// The one small interface between the host's messages and questions and whoever stands for the user: a terminal, a
// script, a window.
#pragma once

#include "CM/platform/CString.h"
#include "orchard/OrchardApi.h"

#include <optional>
#include <vector>

namespace orchard {

enum class MessageKind { information, warning, error, question };

struct Message {
    MessageKind kind = MessageKind::information;
    CString title; ///< may be empty
    CString text;  ///< may have several lines
};

/// A box with more than one button, or with a box to turn it off.
struct Question {
    struct Button {
        int id = 0; ///< IDOK, IDYES...
        CString caption;
    };
    Message message;
    std::vector<Button> buttons;
    int defaultButton = 0; ///< what an empty answer means
    int safeButton = 0;    ///< the answer that loses nothing
    CString checkBox;      ///< the text of the box that turns the question off for good; empty without one
};

struct Reply {
    int button = 0;
    bool doNotAskAgain = false;
};

class ORCHARD_API UserInterface {
  public:
    virtual ~UserInterface() = default;
    virtual void show(const Message &message) = 0;
    /// No value if there is nobody to answer.
    virtual std::optional<Reply> ask(const Question &question) = 0;
};

/// What answers questions in the place of the user.
enum class AnswerPolicy { ask, yes, no };

/// Sets who stands for the user, which must live until it is replaced; null for nobody: messages go to the
/// standard error stream then, and questions get their safe answer.
ORCHARD_API void setUserInterface(UserInterface *user);
/// With a policy other than `ask`, questions that have the button in question aren't put.
ORCHARD_API void setAnswerPolicy(AnswerPolicy policy);

/// The button that the policy gives as the answer; no value if the question would be put.
ORCHARD_API std::optional<int> answerOfPolicy(const Question &question);

/// Shows a message, unless messages are silenced. It goes to the log in either case.
ORCHARD_API void showMessage(const Message &message);
/// Gets an answer: by the policy, else from the user, else the safe one, which is then shown as such.
ORCHARD_API Reply askQuestion(const Question &question);

} // namespace orchard
