#include "CM/CMSupport/core/CMArgument.h"

#include "CM/CMSupport/core/CMProperty.h"

IProperty *CMPropertyArgument::getArgumentProperty(const CString &key) const {
    return CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false);
}

IProperty *CMPropertyDirectedArgument::getCMtoolProperty(const CString &key) { return getArgumentProperty(key); }
