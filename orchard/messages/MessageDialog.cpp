#include "orchard/messages/MessageDialog.h"

#include "CM/host/Messages.h"

namespace orchard {
namespace {

constexpr unsigned int buttonMask = 0xf;
constexpr unsigned int iconMask = 0xf0;

CIcon::Kind iconOf(unsigned int flags) {
    switch (flags & iconMask) {
    case MB_ICONHAND:
        return CIcon::Kind::error;
    case MB_ICONQUESTION:
        return CIcon::Kind::question;
    case MB_ICONEXCLAMATION:
        return CIcon::Kind::warning;
    case MB_ICONINFORMATION:
        return CIcon::Kind::information;
    default:
        return CIcon::Kind::none;
    }
}

} // namespace

MessageDialog::MessageDialog(CString title, CString text, unsigned int flags, const CString &checkBox)
    : CDialog("MessageBox"), text_(*this, "text", std::move(text)), turnOff_(*this, "turnOff", checkBox) {
    SetWindowText(std::move(title));
    icon_.SetIcon(iconOf(flags));
    turnOff_.ShowWindow(!checkBox.IsEmpty());
    const bool isQuestion = (flags & buttonMask) == MB_YESNO || (flags & buttonMask) == MB_YESNOCANCEL;
    ok_.ShowWindow(!isQuestion);
    yes_.ShowWindow(isQuestion);
    no_.ShowWindow(isQuestion);
    cancel_.ShowWindow((flags & buttonMask) == MB_YESNOCANCEL);
    (!isQuestion ? ok_ : (flags & MB_DEFBUTTON2) != 0 ? no_ : yes_).setDefault(true);
}

CString MessageDialog::captionOf(int answer) const {
    const CButton *const found = answer == IDOK       ? &ok_
                                 : answer == IDYES    ? &yes_
                                 : answer == IDNO     ? &no_
                                 : answer == IDCANCEL ? &cancel_
                                                      : nullptr;
    return found != nullptr && found->isVisible() ? found->caption() : CString();
}

} // namespace orchard
