#include "CM/CMSupport/command/NameGuard.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/Unquotable.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/platform/PathText.h"

#include <string>

namespace command {

bool mayReachCommand(std::initializer_list<CString> paths, OutcomeReport &report) {
    for (const CString &path : paths) {
        if (const std::string fault = paths::unquotableIn(path); !fault.empty()) {
            const std::string shown = paths::shownPath(path);
            CMOutputer::writeToCMOutputWnd(resources::format(resources::Text::nameNotQuotable, {shown, fault}));
            report.fail(CMOutcome::Kind::refused,
                        resources::format(resources::Text::outcomeRefused, {shown, fault}));
            return false;
        }
    }
    return true;
}

bool mayReachCommand(const CMArchiveItem &item, OutcomeReport &report) {
    const CString name = item.getFileNameWithPath();
    // Of a doubled backslash, one remains at the end of the directory. Without any, the host is not asked.
    return mayReachCommand({name}, report) &&
           (name.Find('\\') < 0 || mayReachCommand({item.getLocalPath()}, report));
}

bool mayReachCommand(const IUnit &unit, OutcomeReport &report) {
    const CString name = unit.getFullFileName();
    CString own = unit.getOwnDirectory();
    own.TrimRight(platform::separators); // templates see even a root without them
    return mayReachCommand({name, platform::directoryOfPath(name), unit.getFileName(), own}, report);
}

} // namespace command
