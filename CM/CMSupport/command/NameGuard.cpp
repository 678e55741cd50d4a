#include "CM/CMSupport/command/NameGuard.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/CMSupport/core/Unquotable.h"
#include "CM/CMSupport/resources/Format.h"

#include <string>

namespace command {

bool mayReachCommand(std::initializer_list<CString> paths) {
    for (const CString &path : paths) {
        if (const std::string fault = paths::unquotableIn(path); !fault.empty()) {
            CMOutputer::writeToCMOutputWnd(
                resources::format(resources::Text::nameNotQuotable, {paths::shownPath(path), fault}));
            return false;
        }
    }
    return true;
}

bool mayReachCommand(const CMArchiveItem &item) {
    const CString name = item.getFileNameWithPath();
    // Doubled, a separator "\" can be left at the end of the directory; without one nothing is asked of the host.
    return mayReachCommand({name}) && (name.Find('\\') < 0 || mayReachCommand({item.getLocalPath()}));
}

bool mayReachCommand(const IUnit &unit) {
    const CString name = unit.getFullFileName();
    CString own = unit.getOwnDirectory();
    own.TrimRight(paths::separators); // may be a root; a template sees it without
    return mayReachCommand({name, paths::directoryOf(name), unit.getFileName(), own});
}

} // namespace command
