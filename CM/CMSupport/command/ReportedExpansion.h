// Expands the template of a command and records the reason of a failure in the item's report.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/platform/CString.h"

namespace command {

/// Works as CMProperty::ExpandProperty.
int expandProperty(const CString &key, CMArgumentList &args, CString &command, bool useToolName,
                   OutcomeReport &report);
/// Works as CMProperty::Expand on the route of the command tool. `key` is that of the property that contained
/// `text`.
int expandTemplate(const CString &text, const CString &key, CMArgumentList &args, CString &command,
                   OutcomeReport &report);

} // namespace command
