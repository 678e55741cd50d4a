#include "CM/CMSupport/core/CMDiagnostic.h"

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/host/IUnit.h"

namespace {

CString about(const CString &kind, const CString &name, const CString &text) {
    return kind + " '" + name + "': " + text;
}

} // namespace

CMDiagnostic::CMDiagnostic(const int &result, const CString &text, const IUnit *unit)
    : result_(result),
      text_(unit != nullptr ? about(unit->getMetaClassDisplayName(), unit->getName(), text) : text) {}

CMDiagnostic::CMDiagnostic(const int &result, const CString &text, const CMArchiveItem *item)
    : result_(result), text_(item != nullptr ? about(item->getType(), item->getName(), text) : text) {}
