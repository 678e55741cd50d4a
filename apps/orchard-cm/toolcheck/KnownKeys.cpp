#include "apps/orchard-cm/toolcheck/KnownKeys.h"

#include "CM/platform/CString.h"

#include <algorithm>
#include <array>

namespace orchard_cm {

std::span<const KnownKey> knownKeys() {
    using enum KeyKind;
    static constexpr std::array keys{
        KnownKey{"ConnectToCMRepository", command},
        KnownKey{"PostConnectToCMRepository", optionalCommand},
        KnownKey{"AddMember", command},
        KnownKey{"AddMember_ControlledFile", optionalCommand},
        KnownKey{"AddMember_WithoutCheckOutCheckInDirectory", rawCommand},
        KnownKey{"CheckIn", command},
        KnownKey{"CheckOut", command},
        KnownKey{"CheckOutFromArchive", command},
        KnownKey{"LockItem", optionalCommand},
        KnownKey{"UnLockItem", command},
        KnownKey{"Fetch", command},
        KnownKey{"FetchFromArchive", command},
        KnownKey{"History", command},
        KnownKey{"ListArchive", command},
        KnownKey{"Move", command},
        KnownKey{"MoveDirectory", optionalCommand},
        KnownKey{"Rename", command},
        KnownKey{"RenameDirectory", optionalCommand},
        KnownKey{"Delete", command},
        KnownKey{"DeleteDirectory", optionalCommand},
        KnownKey{"OperationErrorPattern", pattern},
        KnownKey{"OperationWarningPattern", pattern},
        KnownKey{"MultiRecordDelimiter", pattern},
        KnownKey{"ListArchiveItsWorkingFile", patternWithGroup},
        KnownKey{"ListArchiveItsVersion", patternWithGroup},
        KnownKey{"ListArchiveItsMode", pattern},
        KnownKey{"ListArchiveItsLocker", patternWithGroup},
        KnownKey{"HeaderItsVersion", patternWithGroup},
        KnownKey{"HeaderItsLocker", patternWithGroup},
        KnownKey{"HeaderInfoItsRepositoryPath", patternWithGroup},
        KnownKey{"CheckOutCheckInDirectoryOnceDuringAddToArchive", truth},
        KnownKey{"ShowAllFilesInArchive", truth},
        KnownKey{"CMSaveOnCheckOut", truth},
        KnownKey{"CMChildThreadTimeOut", number},
        KnownKey{"AskOnCheckoutReadWrite", choice, "Yes;No"},
        KnownKey{"CMArchiveSelection", choice, ";Directory;File"},
        KnownKey{"ReportLoadingError", choice, ";Output Window;Message Box;Both"},
        KnownKey{"RefreshCMStatusAtProjectOpenup", choice, ";Yes;No;Ask User"},
        KnownKey{"CMArchive", text},
        KnownKey{"Repository", text},
        KnownKey{"ArchiveRoot", text},
        KnownKey{"SupportTreeRepository", text},
        KnownKey{"HeaderFile", text},
        KnownKey{"ReadOnly", text},
        KnownKey{"ReadWrite", text},
        KnownKey{"RefusedInLog", text},
        KnownKey{"RefusedInLabel", text},
    };
    return keys;
}

const KnownKey *knownKey(std::string_view name) {
    const CString wanted{std::string(name)};
    const auto keys = knownKeys();
    const auto found = std::ranges::find_if(
        keys, [&](const KnownKey &key) { return wanted.CompareNoCase(std::string(key.name)) == 0; });
    return found == keys.end() ? nullptr : &*found;
}

} // namespace orchard_cm
