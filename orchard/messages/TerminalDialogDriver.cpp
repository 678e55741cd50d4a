#include "orchard/messages/TerminalDialogDriver.h"

#include "orchard/messages/TerminalDialogView.h"
#include "orchard/messages/TerminalText.h"

#include <functional>
#include <optional>
#include <vector>

namespace orchard {
namespace {

constexpr const char *rules =
    "N or a button's text presses it, Enter presses the default one; N toggles a box;\n"
    "N TEXT fills a field, N alone takes several lines; N K chooses option, row or item K;\n"
    "N !K activates K; N ^K sorts by column K; N +K and N -K open and close item K;\n"
    "N xK toggles the box of item K.\n";

/// Removes the first word from the front of `text` and returns it.
std::string_view takeWord(std::string_view &text) {
    text = trimmed(text);
    const std::size_t end = text.find_first_of(" \t");
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(word.size());
    text = trimmed(text);
    return word;
}

/// Returns the numbers of a list such as "1 3 4", each reduced by one; no value for any other text.
std::optional<std::vector<int>> indices(std::string_view text) {
    std::vector<int> numbers;
    while (!text.empty()) {
        const auto number = wholeNumber(takeWord(text));
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number - 1);
    }
    return numbers;
}

/// Performs what was typed after a control's number. `done` is true if the control accepted it.
class Action final : public ControlVisitor {
  public:
    Action(std::string_view typed, std::function<std::string()> readLines)
        : typed_(typed), readLines_(std::move(readLines)) {}

    bool done = false;

    void visit(CStatic & /*control*/) override {}
    void visit(CIcon & /*control*/) override {}
    void visit(CButton &control) override { done = typed_.empty() && control.press(); }
    void visit(CCheckBox &control) override { done = typed_.empty() && control.enter(!control.GetCheck()); }
    void visit(CChoice &control) override { done = control.choose(wholeNumber(typed_).value_or(0) - 1); }
    void visit(CEdit &control) override {
        done = control.enter(typed_.empty() ? CString(readLines_()) : CString(typed_));
    }
    void visit(CListCtrl &control) override {
        if (const auto row = numberAfter('!')) {
            done = control.activate(*row);
        } else if (const auto column = numberAfter('^')) {
            done = control.clickColumn(*column);
        } else if (const auto rows = indices(typed_)) {
            done = control.select(*rows);
        }
    }
    void visit(CTreeCtrl &control) override {
        const auto items = visibleItems(control);
        const auto at = [&](std::optional<int> index) -> CTreeCtrl::Item * {
            const bool holds = index && *index >= 0 && static_cast<std::size_t>(*index) < items.size();
            return holds ? items[static_cast<std::size_t>(*index)] : nullptr;
        };
        if (CTreeCtrl::Item *const item = at(numberAfter('!'))) {
            done = control.activate(*item);
        } else if (CTreeCtrl::Item *const opened = at(numberAfter('+'))) {
            done = control.expand(*opened, true);
        } else if (CTreeCtrl::Item *const closed = at(numberAfter('-'))) {
            done = control.expand(*closed, false);
        } else if (CTreeCtrl::Item *const boxed = at(numberAfter('x'))) {
            done = control.enterCheck(*boxed, boxed->check() != CTreeCtrl::Check::checked);
        } else if (const auto chosen = indices(typed_)) {
            std::vector<CTreeCtrl::Item *> selected;
            for (const int index : *chosen) {
                if (at(index) == nullptr) {
                    return;
                }
                selected.push_back(at(index));
            }
            done = control.select(selected);
        }
    }

  private:
    [[nodiscard]] std::optional<int> numberAfter(char sign) const {
        if (typed_.empty() || typed_.front() != sign) {
            return std::nullopt;
        }
        const auto number = wholeNumber(typed_.substr(1));
        return number ? std::optional(*number - 1) : std::nullopt;
    }

    std::string_view typed_;
    std::function<std::string()> readLines_;
};

/// Returns the button that was named, or the default button for an empty text; null if there is no such button.
CButton *buttonFor(const std::vector<CControl *> &controls, std::string_view typed) {
    std::vector<CButton *> buttons;
    std::vector<std::string> captions;
    for (CControl *const control : controls) {
        if (auto *const button = dynamic_cast<CButton *>(control)) {
            if (typed.empty() && button->isDefault()) {
                return button;
            }
            buttons.push_back(button);
            captions.push_back(button->caption().str());
        }
    }
    const auto index = typed.empty() ? std::nullopt : typedOption(typed, captions);
    return index ? buttons[*index] : nullptr;
}

} // namespace

void TerminalDialogDriver::act(CDialog &dialog, std::string_view typed) {
    if (typed == "?") {
        output_ << rules << (dialog.closingButton() != nullptr ? "q closes the dialog.\n" : "");
        return;
    }
    if (typed == "q") {
        output_ << (dialog.close() ? "" : "This needs an answer.\n");
        return;
    }
    const std::vector<CControl *> controls = dialog.usableControls();
    std::string_view rest = typed;
    const auto number = wholeNumber(takeWord(rest));
    if (!number) {
        if (CButton *const button = buttonFor(controls, typed)) {
            button->press();
        } else {
            output_ << "There is no such button here. Type ? for help.\n";
        }
        return;
    }
    if (*number < 1 || static_cast<std::size_t>(*number) > controls.size()) {
        output_ << "There is no field " << *number << ". Type ? for help.\n";
        return;
    }
    Action action(rest, [this] {
        output_ << "End the text with a line that contains only a dot.\n" << std::flush;
        std::string text;
        for (std::string line; std::getline(input_, line) && line != ".";) {
            text += (text.empty() ? "" : "\n") + line;
        }
        return text;
    });
    controls[static_cast<std::size_t>(*number) - 1]->accept(action);
    if (!action.done) {
        output_ << "That can't be done here. Type ? for help.\n";
    }
}

bool TerminalDialogDriver::run(CDialog &dialog) {
    if (CButton *const button = dialog.onlyButton(); button != nullptr && dialog.usableControls().size() == 1) {
        writeNotice(output_, dialog);
        button->press();
    }
    std::string line;
    while (dialog.isOpen()) {
        writeDialog(output_, dialog);
        output_ << "> " << std::flush;
        if (!std::getline(input_, line)) {
            output_ << '\n';
            return false;
        }
        act(dialog, trimmed(line));
    }
    return true;
}

} // namespace orchard
