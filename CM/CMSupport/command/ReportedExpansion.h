// Expands the template of a command and records the reason for a failure in the item's report.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/platform/CString.h"

namespace command {

/// Works like CMProperty::ExpandProperty.
int expandProperty(const CString &key, CMArgumentList &args, CString &command, bool useToolName,
                   OutcomeReport &report);
/// Works like CMProperty::Expand on the command route. `key` is the key of the property that contained `text`.
int expandTemplate(const CString &text, const CString &key, CMArgumentList &args, CString &command,
                   OutcomeReport &report);

} // namespace command
