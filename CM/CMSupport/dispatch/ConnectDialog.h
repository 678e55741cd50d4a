// The dialog in which the user connects the project to an archive, as far as the facade knows it.
#pragma once

namespace dispatch {

/// Shows a modal dialog without a parent window. Its result is not asked for.
using ModalDialog = void (*)();

/// The dialog that CMFacade::doConnectToArcDlg shows, to be assigned by a program that has such a dialog. While it
/// is null, the transaction opens and closes, and nothing is shown.
ModalDialog &connectToArchiveDialog();

} // namespace dispatch
