#include "CM/CMSupport/dispatch/ConnectDialog.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"

namespace dispatch {

ModalDialog &connectToArchiveDialog() {
    static ModalDialog dialog = nullptr;
    return dialog;
}

} // namespace dispatch

int CMFacade::doConnectToArcDlg() {
    const CMTranscation transaction(nullptr, 1, CMTxnTool, ""); // whether it is valid is not asked, deliberately
    if (const dispatch::ModalDialog show = dispatch::connectToArchiveDialog()) {
        show();
    }
    return 1;
}
