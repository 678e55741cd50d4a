// Determines under which metaclass the properties of the tool in use are.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IDObject.h"
#include "CM/platform/CString.h"

#include <optional>

/// Returns the metaclass whose properties belong to the tool in use: on the provider route "SCC" or, with
/// `useToolName`, the name of the provider; otherwise the tool's name as `referee` has it in the places that
/// `where` (IProperty::IPropertyWhere) allows. Returns nothing, with a line in the debug trace, if no property
/// names a tool. A key that is not found there is looked up in IPN::CMGeneral; CMProperty::getToolProperty does
/// both.
[[nodiscard]] ORC_CM_API std::optional<CString> toolMetaclass(IDObject &referee, int where, bool useToolName);
