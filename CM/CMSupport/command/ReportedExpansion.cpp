#include "CM/CMSupport/command/ReportedExpansion.h"

#include "CM/CMSupport/core/Expansion.h"
#include "CM/CMSupport/resources/Format.h"

namespace command {

namespace {

int reported(int result, const Expansion::Fault &fault, const CString &key, OutcomeReport &report) {
    report.uses(key);
    if (result == 1) {
        return result;
    }
    if (fault.name.IsEmpty()) { // there is no such property
        report.lacksCommand(key);
    } else if (fault.isEndless) {
        report.fail(CMOutcome::Kind::notExpanded,
                    resources::format(resources::Text::outcomeEndless, {key, fault.name}));
    } else {
        report.lacksValue(key, fault.name);
    }
    return result;
}

} // namespace

int expandProperty(const CString &key, CMArgumentList &args, CString &command, bool useToolName,
                   OutcomeReport &report) {
    Expansion expansion(args);
    const int result = expansion.expandProperty(key, command, useToolName);
    return reported(result, expansion.fault(), key, report);
}

int expandTemplate(const CString &text, const CString &key, CMArgumentList &args, CString &command,
                   OutcomeReport &report) {
    Expansion expansion(args);
    const int result = expansion.expand(text, "a template", command, false);
    return reported(result, expansion.fault(), key, report);
}

} // namespace command
