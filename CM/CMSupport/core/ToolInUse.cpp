#include "CM/CMSupport/core/ToolInUse.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"

std::optional<CString> toolMetaclass(IDObject &referee, int where, bool useToolName) {
    if (CMProperty::getUseSCCtool() != 0) {
        return useToolName ? CMProperty::SCCToolName : CString(keys::providerMetaclass);
    }
    const IProperty *const tool = CMProperty::getCMTool(&referee, where);
    return tool == nullptr ? std::nullopt : std::optional(tool->getValue());
}
