#include "CM/platform/dialog/Controls.h"

namespace {
void call(const std::function<void()> &handler) {
    if (handler) {
        handler();
    }
}
} // namespace

bool CButton::press() {
    if (!takesEvents()) {
        return false;
    }
    call(onPressed_);
    return true;
}

bool CCheckBox::enter(bool check) {
    if (!takesEvents()) {
        return false;
    }
    if (checked_ != check) {
        SetCheck(check);
        call(onClicked_);
    }
    return true;
}

void CChoice::AddString(CString text) {
    options_.push_back({std::move(text), true});
    changed();
}

bool CChoice::holds(int index) const { return index >= 0 && index < static_cast<int>(options_.size()); }

void CChoice::enableOption(int index, bool enable) {
    if (holds(index)) {
        assign(options_[static_cast<std::size_t>(index)].enabled, enable);
    }
}

void CChoice::ResetContent() {
    options_.clear();
    selected_ = -1;
    changed();
}

void CChoice::SetCurSel(int index) { assign(selected_, holds(index) ? index : -1); }

bool CChoice::choose(int index) {
    if (!takesEvents() || !holds(index) || !options_[static_cast<std::size_t>(index)].enabled) {
        return false;
    }
    if (selected_ != index) {
        SetCurSel(index);
        call(onSelected_);
    }
    return true;
}

bool CEdit::enter(const CString &text) {
    if (!takesEvents() || readOnly_) {
        return false;
    }
    const int lineEnd = lines_ == Lines::one ? text.FindOneOf("\r\n") : -1;
    const CString taken = lineEnd < 0 ? text : text.Left(lineEnd);
    if (taken != text_) {
        SetWindowText(taken);
        call(onChanged_);
    }
    return true;
}
