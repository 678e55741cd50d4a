#include "CM/CMSupport/questions/CCMModalDialog.h"

#include "CM/host/Environment.h"

int CCMModalDialog::DoModal() {
    IAbsEnvironmentInterface *const user = IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface();
    const int result = CDialog::DoModal(user == nullptr ? nullptr : user->dialogDriver());
    return result == dialogNotAnswered ? OnNotAnswered() : result;
}
