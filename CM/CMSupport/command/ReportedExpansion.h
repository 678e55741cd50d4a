// Expands the template of a command, and puts the reason of a failure into the report of the item.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/platform/CString.h"

namespace command {

/// As CMProperty::ExpandProperty.
int expandProperty(const CString &key, CMArgumentList &args, CString &command, bool useToolName,
                   OutcomeReport &report);
/// As CMProperty::Expand on the route of the command tool; `key` is that of the property that the text comes from.
int expandTemplate(const CString &text, const CString &key, CMArgumentList &args, CString &command,
                   OutcomeReport &report);

} // namespace command
