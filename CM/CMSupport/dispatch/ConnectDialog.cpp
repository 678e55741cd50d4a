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
    // Required: the dialog is shown even if the transaction is invalid.
    // Test: ConnectDialog.IsShownWithoutAToolAndWithoutAProjectToo.
    const CMTranscation transaction(nullptr, 1, CMTxnTool, "");
    if (const dispatch::ModalDialog show = dispatch::connectToArchiveDialog()) {
        show();
    }
    return 1;
}
