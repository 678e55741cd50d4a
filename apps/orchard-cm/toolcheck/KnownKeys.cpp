#include "apps/orchard-cm/toolcheck/KnownKeys.h"

#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IPN.h"
#include "CM/platform/CString.h"
#include "apps/orchard-cm/model/RefusedCharacters.h"

#include <algorithm>
#include <array>

namespace orchard_cm {

std::span<const KnownKey> knownKeys() {
    using enum KeyKind;
    static const std::array known{
        KnownKey{IPN::CMConnectToCMRepository, command},
        KnownKey{keys::postConnect, optionalCommand},
        KnownKey{IPN::CMAddMember, command},
        KnownKey{keys::addControlledFile, optionalCommand},
        KnownKey{keys::addInDirectory, rawCommand},
        KnownKey{IPN::CMCheckIn, command},
        KnownKey{IPN::CMCheckOut, command},
        KnownKey{IPN::CMCheckOutFromArchive, command},
        KnownKey{IPN::CMLockItem, optionalCommand},
        KnownKey{IPN::CMUnLockItem, command},
        KnownKey{IPN::CMFetch, command},
        KnownKey{IPN::CMFetchFromArchive, command},
        KnownKey{keys::history, command},
        KnownKey{IPN::CMListArchive, command},
        KnownKey{keys::move, command},
        KnownKey{keys::moveDirectory, optionalCommand},
        KnownKey{keys::rename, command},
        KnownKey{keys::renameDirectory, optionalCommand},
        KnownKey{IPN::Delete, command},
        KnownKey{keys::deleteDirectory, optionalCommand},
        KnownKey{keys::errorPattern, pattern},
        KnownKey{keys::warningPattern, pattern},
        KnownKey{IPN::CMMultiRecordDelimiter, pattern},
        KnownKey{IPN::CMListArchiveItsWorkingFile, patternWithGroup},
        KnownKey{IPN::CMListArchiveItsVersion, patternWithGroup},
        KnownKey{IPN::CMListArchiveItsMode, pattern},
        KnownKey{IPN::CMListArchiveItsLocker, patternWithGroup},
        KnownKey{IPN::CMHeaderItsVersion, patternWithGroup},
        KnownKey{IPN::CMHeaderItsLocker, patternWithGroup},
        KnownKey{keys::repositoryPathPattern, patternWithGroup},
        KnownKey{keys::addOncePerDirectory, truth},
        KnownKey{keys::showAllFiles, truth},
        KnownKey{IPN::CMSaveOnCheckOut, truth},
        KnownKey{IPN::CMChildThreadTimeOut, number},
        KnownKey{keys::askOnCheckout, choice, "Yes;No"},
        KnownKey{IPN::CMArchiveSelection, choice, ";Directory;File"},
        KnownKey{keys::reportLoadingError, choice, ";Output Window;Message Box;Both"},
        KnownKey{keys::refreshStatus, choice, ";Yes;No;Ask User"},
        KnownKey{IPN::CMArchive, text},
        KnownKey{keys::repository, text},
        KnownKey{keys::archiveRoot, text},
        KnownKey{keys::treeRepository, text},
        KnownKey{IPN::CMHeaderFile, text},
        KnownKey{IPN::CMReadOnly, text},
        KnownKey{IPN::CMReadWrite, text},
        KnownKey{refusedInLogKey, text},
        KnownKey{refusedInLabelKey, text},
    };
    return known;
}

const KnownKey *knownKey(std::string_view name) {
    const CString wanted(name);
    const auto known = knownKeys();
    const auto found =
        std::ranges::find_if(known, [&](const KnownKey &key) { return wanted.CompareNoCase(key.name) == 0; });
    return found == known.end() ? nullptr : &*found;
}

} // namespace orchard_cm
