#include "orchard/messages/TerminalDialogView.h"

#include "orchard/messages/TerminalText.h"

#include <algorithm>
#include <string>

namespace orchard {
namespace {

/// Finds out whether a control is one that is only looked at.
class IsField final : public ControlVisitor {
  public:
    static bool test(CControl &control) {
        IsField visitor;
        control.accept(visitor);
        return visitor.result_;
    }

  private:
    void visit(CStatic & /*control*/) override { result_ = false; }
    void visit(CIcon & /*control*/) override { result_ = false; }
    void visit(CButton & /*control*/) override {}
    void visit(CCheckBox & /*control*/) override {}
    void visit(CChoice & /*control*/) override {}
    void visit(CEdit & /*control*/) override {}
    void visit(CListCtrl & /*control*/) override {}
    void visit(CTreeCtrl & /*control*/) override {}
    bool result_ = true;
};

void addVisible(std::vector<CTreeCtrl::Item *> &items,
                const std::vector<std::unique_ptr<CTreeCtrl::Item>> &level) {
    for (const auto &item : level) {
        items.push_back(item.get());
        if (item->expanded) {
            addVisible(items, item->children());
        }
    }
}

class Writer final : public ControlVisitor {
  public:
    Writer(std::ostream &output, std::size_t number) : output_(output), number_(number) {}

    void visit(CStatic &control) override { output_ << shown(control.caption()) << '\n'; }
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
        for (std::size_t i = 0; i < control.rows().size(); ++i) {
            const auto &row = control.rows()[i];
            output_ << "      " << i + 1 << (row.selected ? " *" : "  ");
            for (const CString &cell : row.cells) {
                output_ << " | " << shown(cell);
            }
            output_ << '\n';
        }
    }
    void visit(CTreeCtrl &control) override {
        begin() << shown(control.caption()) << '\n';
        std::size_t number = 0;
        for (const CTreeCtrl::Item *const item : visibleItems(control)) {
            output_ << "      " << ++number << (item->selected ? " * " : "   ");
            for (const CTreeCtrl::Item *up = item->parent(); up != nullptr; up = up->parent()) {
                output_ << "  ";
            }
            output_ << branch(*item) << box(item->check) << shown(item->text) << '\n';
        }
    }

  private:
    static std::string shown(const CString &text) { return forTerminal(text.view()); }
    static const char *branch(const CTreeCtrl::Item &item) {
        return item.children().empty() && !item.mayHaveChildren ? "  " : item.expanded ? "- " : "+ ";
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
            return output_ << "   -  "; // shown, but not to be used now
        }
        return output_ << (number_ < 10 ? "   " : "  ") << number_ << ") ";
    }

    std::ostream &output_;
    std::size_t number_;
};

} // namespace

std::vector<CControl *> usableControls(const CDialog &dialog) {
    std::vector<CControl *> controls;
    std::ranges::copy_if(dialog.controls(), std::back_inserter(controls),
                         [](CControl *control) { return control->takesEvents() && IsField::test(*control); });
    return controls;
}

std::vector<CTreeCtrl::Item *> visibleItems(const CTreeCtrl &tree) {
    std::vector<CTreeCtrl::Item *> items;
    addVisible(items, tree.roots());
    return items;
}

void writeDialog(std::ostream &output, const CDialog &dialog) {
    if (!dialog.title().IsEmpty()) {
        output << "--- " << forTerminal(dialog.title().view()) << " ---\n";
    }
    std::size_t number = 0;
    for (CControl *const control : dialog.controls()) {
        if (control->isVisible()) {
            const bool isUsable = control->takesEvents() && IsField::test(*control);
            Writer writer(output, isUsable ? ++number : 0);
            control->accept(writer);
        }
    }
}

} // namespace orchard
