// How a dialog looks on a terminal.
#pragma once

#include "CM/platform/dialog/CDialog.h"
#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"

#include <ostream>
#include <vector>

namespace orchard {

/// The controls that can be used now, in their order: the first has the number 1.
std::vector<CControl *> usableControls(const CDialog &dialog);
/// The items of a tree that can be seen, in the order in which they stand there: the first has the number 1.
std::vector<CTreeCtrl::Item *> visibleItems(const CTreeCtrl &tree);
/// Writes the dialog's title and all its visible controls.
void writeDialog(std::ostream &output, const CDialog &dialog);

} // namespace orchard
