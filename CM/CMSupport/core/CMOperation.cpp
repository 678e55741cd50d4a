#include "CM/CMSupport/core/CMOperation.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/resources/Texts.h"

int CMOperation::isCMTool(CString &message, IDObject *object, bool hybrid) {
    if (CMProperty::getUseSCCtool() != 0 && hybrid) {
        return 1;
    }
    const IProperty *tool = CMProperty::getCMTool(object, IProperty::inherited);
    if (tool == nullptr) {
        return 0; // required: the message stays unchanged
    }
    if (tool->getValue().CompareNoCase("None") == 0) {
        message = resources::text(resources::Text::noToolSelected);
        return 0;
    }
    message.Empty();
    return 1;
}

int CMArchiveOperation::operator()(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) { return 0; }

int CMFreeTextOperation::operator()(CMUnitList &, CMDiagnosticList &) { return 0; }
