// Declares the dialog that the facade shows to connect the project to an archive.
#pragma once

namespace dispatch {

/// Shows a modal dialog without a parent window. Its result is ignored.
using ModalDialog = void (*)();

/// Returns the dialog that CMFacade::doConnectToArcDlg shows; a program that has such a dialog assigns it. While it
/// is null, the transaction opens and closes, and nothing is shown.
ModalDialog &connectToArchiveDialog();

} // namespace dispatch
