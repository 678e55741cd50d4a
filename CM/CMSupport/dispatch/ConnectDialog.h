// The dialog in which the user connects the project to an archive, as far as the facade knows it.
#pragma once

namespace dispatch {

/// Shows a modal dialog without a parent window. Its result is not asked for.
using ModalDialog = void (*)();

/// The dialog that CMFacade::doConnectToArcDlg shows, assigned once by the folder of the dialogs, which is above
/// this one. Null until then: the transaction opens and closes, and nothing is shown.
ModalDialog &connectToArchiveDialog();

} // namespace dispatch
