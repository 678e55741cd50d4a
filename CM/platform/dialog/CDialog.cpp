#include "CM/platform/dialog/CDialog.h"

#include <algorithm>
#include <iterator>

CControl::CControl(CDialog &dialog, CString id, CString caption)
    : dialog_(dialog), id_(std::move(id)), caption_(std::move(caption)) {
    dialog_.controls_.push_back(this);
}

CControl::~CControl() {
    std::erase(dialog_.controls_, this);
    if (hasFocus()) {
        dialog_.focus_ = nullptr;
    }
}

void CControl::SetFocus() { dialog_.focus_ = this; }

bool CControl::hasFocus() const { return dialog_.focus_ == this; }

bool CControl::takesEvents() const { return isUsable() && dialog_.isOpen(); }

CControl *CDialog::control(const CString &id) const {
    const auto found = std::ranges::find(controls_, id, &CControl::id);
    return found == controls_.end() ? nullptr : *found;
}

std::vector<CControl *> CDialog::usableControls() const {
    std::vector<CControl *> usable;
    std::ranges::copy_if(controls_, std::back_inserter(usable), &CControl::isUsable);
    return usable;
}

CButton *CDialog::button(const CString &id) const {
    auto *const found = dynamic_cast<CButton *>(control(id));
    return found != nullptr && found->isUsable() ? found : nullptr;
}

CButton *CDialog::onlyButton() const {
    CButton *only = nullptr;
    for (CControl *const control : usableControls()) {
        auto *const button = dynamic_cast<CButton *>(control);
        const bool isCheckBox = dynamic_cast<CCheckBox *>(control) != nullptr;
        if (!isCheckBox && (button == nullptr || only != nullptr)) {
            return nullptr;
        }
        only = button != nullptr ? button : only;
    }
    return only != nullptr && only->id() == "ok" ? only : nullptr;
}

CButton *CDialog::closingButton() const {
    CButton *const cancel = button("cancel");
    return cancel != nullptr ? cancel : onlyButton();
}

CButton *CDialog::safeButton() const {
    CButton *const no = button("no");
    return no != nullptr ? no : closingButton();
}

CString CDialog::prompt() const {
    CString text;
    for (CControl *const control : controls_) {
        if (const auto *const words = dynamic_cast<CStatic *>(control);
            words != nullptr && words->isVisible() && !words->caption().IsEmpty()) {
            text += (text.IsEmpty() ? "" : " ") + words->caption();
        }
    }
    return text;
}

CIcon::Kind CDialog::icon() const {
    for (CControl *const control : controls_) {
        if (const auto *const icon = dynamic_cast<CIcon *>(control); icon != nullptr && icon->isVisible()) {
            return icon->icon();
        }
    }
    return CIcon::Kind::none;
}

int CDialog::DoModal(platform::DialogDriver *driver) {
    if (driver == nullptr) {
        return dialogNotAnswered;
    }
    struct Closing {
        bool &open;
        ~Closing() { open = false; }
    } closing{open_};
    open_ = true;
    result_ = dialogNotAnswered;
    OnInitDialog();
    if (open_ && !driver->run(*this)) {
        return dialogNotAnswered;
    }
    // A driver that returns while the dialog is open has lost its user without reporting it: nobody has answered.
    return open_ ? dialogNotAnswered : result_;
}

bool CDialog::close() {
    CButton *const button = closingButton();
    return button != nullptr && button->press();
}

void CDialog::EndDialog(int result) {
    result_ = result;
    open_ = false;
}
