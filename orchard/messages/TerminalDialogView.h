// Writes dialogs to a terminal.
#pragma once

#include "CM/platform/dialog/CDialog.h"
#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"

#include <ostream>
#include <vector>

namespace orchard {

/// Returns the items of a tree that can be seen, in their order: the first has the number 1.
std::vector<CTreeCtrl::Item *> visibleItems(const CTreeCtrl &tree);
/// Writes the dialog's title and all its visible controls; each usable control gets a number, from 1.
void writeDialog(std::ostream &output, const CDialog &dialog);
/// Writes only the title and the texts.
void writeNotice(std::ostream &output, const CDialog &dialog);

} // namespace orchard
