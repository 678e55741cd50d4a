#include "orchard/messages/TerminalDialogView.h"

#include "orchard/messages/TerminalText.h"

#include <string>
#include <utility>

namespace orchard {
namespace {

void addVisible(std::vector<CTreeCtrl::Item *> &items,
                const std::vector<std::unique_ptr<CTreeCtrl::Item>> &level) {
    for (const auto &item : level) {
        items.push_back(item.get());
        if (item->isExpanded()) {
            addVisible(items, item->children());
        }
    }
}

void writeTitle(std::ostream &output, const CDialog &dialog) {
    if (!dialog.title().IsEmpty()) {
        output << "--- " << forTerminal(dialog.title().view()) << " ---\n";
    }
}

/// Returns the text that replaces the dialog's icon.
const char *iconText(const CDialog &dialog) {
    switch (dialog.icon()) {
    case CIcon::Kind::error:
        return "Error: ";
    case CIcon::Kind::warning:
        return "Warning: ";
    default:
        return "";
    }
}

class Writer final : public ControlVisitor {
  public:
    /// `prefix` is written before the first text.
    Writer(std::ostream &output, const char *prefix) : output_(output), prefix_(prefix) {}

    /// Sets the number of the next control; 0 for one that can't be used.
    void setNumber(std::size_t number) { number_ = number; }

    void visit(CStatic &control) override {
        output_ << std::exchange(prefix_, "") << shown(control.caption()) << '\n';
    }
    void visit(CIcon & /*control*/) override {}
    void visit(CButton &control) override {
        begin() << '<' << shown(control.caption()) << '>' << (control.isDefault() ? " (Enter)\n" : "\n");
    }
    void visit(CCheckBox &control) override {
        begin() << (control.GetCheck() ? "[x] " : "[ ] ") << shown(control.caption()) << '\n';
    }
    void visit(CChoice &control) override {
        begin() << shown(control.caption()) << '\n';
        const auto &options = control.options();
        for (std::size_t i = 0; i < options.size(); ++i) {
            output_ << "      " << i + 1 << ' ' << (static_cast<int>(i) == control.GetCurSel() ? "(o) " : "( ) ")
                    << shown(options[i].text) << (options[i].enabled ? "\n" : " -- not available\n");
        }
    }
    void visit(CEdit &control) override {
        begin() << shown(control.caption()) << ": " << shown(control.text()) << '\n';
    }
    void visit(CListCtrl &control) override {
        begin() << shown(control.caption());
        for (const auto &column : control.columns()) {
            output_ << " | " << shown(column.title);
        }
        output_ << '\n';
        for (int row = 0; row < control.GetItemCount(); ++row) {
            output_ << "      " << row + 1 << (control.isSelected(row) ? " *" : "  ");
            for (int column = 0; column < static_cast<int>(control.columns().size()); ++column) {
                output_ << " | " << shown(control.GetItemText(row, column));
            }
            output_ << '\n';
        }
    }
    void visit(CTreeCtrl &control) override {
        begin() << shown(control.caption()) << '\n';
        std::size_t number = 0;
        for (const CTreeCtrl::Item *const item : visibleItems(control)) {
            output_ << "      " << ++number << (item->isSelected() ? " * " : "   ");
            for (const CTreeCtrl::Item *up = item->parent(); up != nullptr; up = up->parent()) {
                output_ << "  ";
            }
            output_ << branch(*item) << box(item->check()) << shown(item->text()) << '\n';
        }
    }

  private:
    static std::string shown(const CString &text) { return forTerminal(text.view()); }
    static const char *branch(const CTreeCtrl::Item &item) {
        return item.children().empty() && !item.mayHaveChildren() ? "  " : item.isExpanded() ? "- " : "+ ";
    }
    static const char *box(CTreeCtrl::Check check) {
        switch (check) {
        case CTreeCtrl::Check::checked:
            return "[x] ";
        case CTreeCtrl::Check::unchecked:
            return "[ ] ";
        case CTreeCtrl::Check::partly:
            return "[~] ";
        case CTreeCtrl::Check::noBox:
            break;
        }
        return "";
    }
    std::ostream &begin() {
        if (number_ == 0) {
            return output_ << "   -  "; // visible, but can't be used now
        }
        return output_ << (number_ < 10 ? "   " : "  ") << number_ << ") ";
    }

    std::ostream &output_;
    const char *prefix_;
    std::size_t number_ = 0;
};

} // namespace

std::vector<CTreeCtrl::Item *> visibleItems(const CTreeCtrl &tree) {
    std::vector<CTreeCtrl::Item *> items;
    addVisible(items, tree.roots());
    return items;
}

void writeDialog(std::ostream &output, const CDialog &dialog) {
    writeTitle(output, dialog);
    std::size_t number = 0;
    Writer writer(output, iconText(dialog));
    for (CControl *const control : dialog.controls()) {
        if (control->isVisible()) {
            writer.setNumber(control->takesEvents() ? ++number : 0);
            control->accept(writer);
        }
    }
}

void writeNotice(std::ostream &output, const CDialog &dialog) {
    writeTitle(output, dialog);
    Writer writer(output, iconText(dialog));
    for (CControl *const control : dialog.controls()) {
        if (control->isVisible() && dynamic_cast<CStatic *>(control) != nullptr) {
            control->accept(writer);
        }
    }
    output.flush();
}

} // namespace orchard
