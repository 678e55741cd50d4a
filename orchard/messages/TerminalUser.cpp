#include "orchard/messages/TerminalUser.h"

#include "orchard/messages/TerminalText.h"

#include <string>

namespace orchard {

void TerminalUser::write(const Message &message) {
    const char *const prefix = message.kind == MessageKind::error     ? "Error: "
                               : message.kind == MessageKind::warning ? "Warning: "
                                                                      : "";
    if (!message.title.IsEmpty()) {
        output_ << forTerminal(message.title.view()) << '\n';
    }
    output_ << prefix << forTerminal(message.text.view()) << '\n';
}

void TerminalUser::show(const Message &message) {
    write(message);
    output_.flush();
}

std::optional<Reply> TerminalUser::ask(const Question &question) {
    write(question.message);
    std::vector<std::string> captions;
    std::size_t defaultIndex = 0;
    for (const Question::Button &button : question.buttons) {
        defaultIndex = button.id == question.defaultButton ? captions.size() : defaultIndex;
        captions.push_back(button.caption.str());
    }
    const auto readLine = [&](std::string &line) {
        output_.flush();
        return static_cast<bool>(std::getline(input_, line));
    };
    std::string line;
    std::optional<std::size_t> chosen;
    while (!chosen) {
        for (std::size_t i = 0; i < captions.size(); ++i) {
            output_ << (i == 0 ? "" : "  ") << i + 1 << ") " << captions[i];
        }
        output_ << "  [" << captions[defaultIndex] << "] ";
        if (!readLine(line)) {
            output_ << '\n';
            return std::nullopt;
        }
        const std::string_view typed = trimmed(line);
        chosen = typed.empty() ? defaultIndex : typedOption(typed, captions);
    }
    Reply reply{question.buttons[*chosen].id, false};
    if (!question.checkBox.IsEmpty()) {
        output_ << forTerminal(question.checkBox.view()) << " (y/n) [n] ";
        reply.doNotAskAgain =
            readLine(line) && (trimmed(line) == "y" || trimmed(line) == "Y" || trimmed(line) == "yes");
    }
    return reply;
}

} // namespace orchard
