#include "orchard/messages/ScriptedDialogDriver.h"

#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace orchard {

namespace {

// Removes the text up to the separator from the front of `text`, together with the separator, and returns it.
std::string_view takeWord(std::string_view &text, char separator = ' ') {
    const auto end = text.find(separator);
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return word;
}

std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// Performs one step on the control that it visits. `done` is true if the control accepted the event, `understood`
// if the step makes sense for a control of its kind.
class Step final : public ControlVisitor {
  public:
    Step(std::string_view verb, std::string_view rest) : verb_(verb), rest_(rest) {}

    bool done = false;
    bool understood = true;

    void visit(CStatic & /*control*/) override { understood = false; }
    void visit(CIcon & /*control*/) override { understood = false; }
    void visit(CButton &control) override { done = isVerb("press") && control.press(); }
    void visit(CCheckBox &control) override {
        done = isVerb("check", "uncheck") && control.enter(verb_ == "check");
    }
    void visit(CChoice &control) override {
        if (isVerb("choose")) {
            const auto &options = control.options();
            const auto option =
                std::ranges::find_if(options, [this](const auto &entry) { return entry.text == rest_; });
            done = control.choose(static_cast<int>(option - options.begin()));
        }
    }
    void visit(CEdit &control) override { done = isVerb("edit") && control.enter(rest_); }
    void visit(CListCtrl &control) override {
        if (verb_ == "select") {
            std::vector<int> rows;
            while (!rest_.empty()) {
                rows.push_back(number(takeWord(rest_)).value_or(-1)); // -1: no such row, refused
            }
            done = control.select(rows);
        } else if (verb_ == "column") {
            done = control.clickColumn(number(rest_).value_or(-1));
        } else if (isVerb("activate")) {
            done = control.activate(number(rest_).value_or(-1));
        }
    }
    void visit(CTreeCtrl &control) override {
        if (!isVerb("select", "activate") && !isVerb("expand", "collapse") && !isVerb("check", "uncheck")) {
            return;
        }
        understood = true;
        std::vector<CTreeCtrl::Item *> items;
        while (!rest_.empty()) {
            items.push_back(control.find(verb_ == "select" ? takeWord(rest_, '|') : std::exchange(rest_, {})));
        }
        if (std::ranges::find(items, nullptr) != items.end() || (items.empty() && verb_ != "select")) {
            return;
        }
        if (verb_ == "select") {
            done = control.select(items);
        } else if (verb_ == "activate") {
            done = control.activate(*items.front());
        } else if (verb_ == "expand" || verb_ == "collapse") {
            done = control.expand(*items.front(), verb_ == "expand");
        } else {
            done = control.enterCheck(*items.front(), verb_ == "check");
        }
    }

  private:
    bool isVerb(std::string_view one, std::string_view other = {}) {
        understood = verb_ == one || (!other.empty() && verb_ == other);
        return understood;
    }

    std::string_view verb_;
    std::string_view rest_;
};

// Returns why the step could not be done; empty if it was done.
std::string_view perform(CDialog &dialog, std::string_view step) {
    const std::string_view verb = takeWord(step);
    if (verb == "close") {
        return dialog.close() ? "" : "refused";
    }
    CControl *const control = dialog.control(takeWord(step));
    if (control == nullptr) {
        return "no such control";
    }
    Step todo(verb, step);
    control->accept(todo);
    return !todo.understood ? "not a step for this control" : !todo.done ? "refused" : "";
}

} // namespace

void ScriptedDialogDriver::play(const CString &dialog, DialogScript script) {
    scripts_[dialog].push_back(std::move(script));
}

bool ScriptedDialogDriver::hasScript(const CString &dialog) const {
    const auto found = scripts_.find(dialog);
    return found != scripts_.end() && !found->second.empty();
}

DialogScript ScriptedDialogDriver::nextScript(const CString &dialog) {
    if (!hasScript(dialog)) {
        return defaultScript_;
    }
    auto &scripts = scripts_[dialog];
    DialogScript script = std::move(scripts.front());
    scripts.pop_front();
    return script;
}

bool ScriptedDialogDriver::run(CDialog &dialog) {
    if (CButton *const button = dialog.onlyButton(); button != nullptr && !hasScript(dialog.name())) {
        notices_.push_back({dialog.icon(), dialog.prompt()});
        return button->press() && !dialog.isOpen();
    }
    shown_.push_back(dialog.name());
    if (onShown) {
        onShown(dialog);
    }
    for (const CString &step : nextScript(dialog.name())) {
        if (!dialog.isOpen()) {
            break;
        }
        if (const std::string_view why = perform(dialog, step); !why.empty()) {
            problems_.push_back(dialog.name() + ": " + step + ": " + why);
        }
    }
    return !dialog.isOpen();
}

} // namespace orchard
