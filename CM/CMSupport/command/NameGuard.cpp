#include "CM/CMSupport/command/NameGuard.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/Expansion.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/Unquotable.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/platform/PathText.h"
#include "CM/platform/Quotable.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace command {

namespace {

void refuse(std::string_view path, std::string_view fault, OutcomeReport &report) {
    const std::string shown = paths::shownPath(path);
    CMOutputer::writeToCMOutputWnd(resources::format(resources::Text::nameNotQuotable, {shown, fault}));
    report.fail(CMOutcome::Kind::refused, resources::format(resources::Text::outcomeRefused, {shown, fault}));
}

/// Checks the path together with the names beside it. Each of them can be quoted.
bool mayGoTogether(const CString &path, const Names &beside, OutcomeReport &report) {
    std::string together(path.view());
    for (const CString &other : beside) {
        together += other.view();
        if (platform::canMakeConditional(together)) {
            refuse(path, resources::format(resources::Text::conditionalOfSeveral, {paths::shownPath(other)}),
                   report);
            return false;
        }
    }
    return true;
}

/// Checks each name alone.
bool areQuotable(const Names &paths, OutcomeReport &report) {
    for (const CString &path : paths) {
        if (const std::string fault = paths::unquotableIn(path); !fault.empty()) {
            refuse(path, fault, report);
            return false;
        }
    }
    return true;
}

/// Returns the value as a template gets it, which expands the variables in it; one that can't be expanded stays.
CString expanded(const CString &value, const CString &variable, CMArgumentList &args) {
    CString result;
    return value.Find('$') >= 0 && Expansion(args).expand(value, variable, result, false) == 1 ? result : value;
}

} // namespace

bool mayReachCommand(const Names &paths, OutcomeReport &report) {
    return areQuotable(paths, report) && mayGoTogether(paths.front(), {paths.begin() + 1, paths.end()}, report);
}

bool mayReachCommand(const CMArchiveItem &item, const Names &beside, OutcomeReport &report) {
    const CString name = item.getFileNameWithPath();
    // Of a doubled backslash, one remains at the end of the directory. Without any, the host is not asked.
    return areQuotable(beside, report) && areQuotable({name}, report) &&
           (name.Find('\\') < 0 || areQuotable({item.getLocalPath()}, report)) &&
           mayGoTogether(name, beside, report);
}

bool mayReachCommand(const IUnit &unit, const Names &beside, OutcomeReport &report) {
    const CString name = unit.getFullFileName();
    CString own = unit.getOwnDirectory();
    own.TrimRight(platform::separators); // templates see even a root without them
    return areQuotable(beside, report) &&
           mayReachCommand({name, platform::directoryOfPath(name), unit.getFileName(), own}, report) &&
           mayGoTogether(name, beside, report);
}

bool mayReachCommand(CMArgumentList &args, OutcomeReport &report) { return areQuotable(namesIn(args), report); }

Names namesIn(CMArgumentList &args) {
    Names names;
    for (const char *const variable : {"archive", "targetDir"}) {
        const auto found = std::ranges::find_if(args, [variable](const CMArgument *argument) {
            return argument != nullptr && argument->isNamed(variable) != 0;
        });
        if (found != args.end()) {
            names.push_back(expanded((*found)->substitute(variable), variable, args));
        }
    }
    return names;
}

} // namespace command
