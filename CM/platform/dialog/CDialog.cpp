#include "CM/platform/dialog/CDialog.h"

#include <algorithm>

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

bool CControl::takesEvents() const { return enabled_ && visible_ && dialog_.isOpen(); }

CControl *CDialog::control(const CString &id) const {
    const auto found = std::ranges::find(controls_, id, &CControl::id);
    return found == controls_.end() ? nullptr : *found;
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
    // A driver that comes back from an open dialog has lost its user without saying so: nobody has answered.
    return open_ ? dialogNotAnswered : result_;
}

bool CDialog::close() {
    if (!open_) {
        return false;
    }
    OnCancel();
    return true;
}

void CDialog::EndDialog(int result) {
    result_ = result;
    open_ = false;
}
