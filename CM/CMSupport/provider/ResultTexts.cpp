#include "CM/CMSupport/provider/ResultTexts.h"

#include "CM/CMSupport/resources/Texts.h"
#include "CM/scc/scc.h"

using resources::Text;

namespace provider {

CString resultText(long result) {
    switch (result) {
    case SCC_E_INITIALIZEFAILED:
        return resources::text(Text::resultInitializeFailed);
    case SCC_E_UNKNOWNPROJECT:
        return resources::text(Text::resultUnknownProject);
    case SCC_E_COULDNOTCREATEPROJECT:
        return resources::text(Text::resultProjectNotCreated);
    case SCC_E_NOTCHECKEDOUT:
        return resources::text(Text::resultNotCheckedOut);
    case SCC_E_ALREADYCHECKEDOUT:
        return resources::text(Text::resultAlreadyCheckedOut);
    case SCC_E_FILEISLOCKED:
        return resources::text(Text::resultFileLocked);
    case SCC_E_FILEOUTEXCLUSIVE:
        return resources::text(Text::resultOutExclusively);
    case SCC_E_ACCESSFAILURE:
        return resources::text(Text::resultAccessFailure);
    case SCC_E_CHECKINCONFLICT:
        return resources::text(Text::resultCheckInConflict);
    case SCC_E_FILEALREADYEXISTS:
        return resources::text(Text::resultFileExists);
    case SCC_E_FILENOTCONTROLLED:
        return resources::text(Text::resultNotControlled);
    case SCC_E_FILEISCHECKEDOUT:
        return resources::text(Text::resultFileCheckedOut);
    case SCC_E_NOSPECIFIEDVERSION:
        return resources::text(Text::resultNoVersion);
    case SCC_E_OPNOTSUPPORTED:
        return resources::text(Text::resultNotSupported);
    case SCC_E_NONSPECIFICERROR:
        return resources::text(Text::resultNonspecificError);
    case SCC_E_OPNOTPERFORMED:
        return resources::text(Text::resultNotPerformed);
    case SCC_E_TYPENOTSUPPORTED:
        return resources::text(Text::resultTypeNotSupported);
    case SCC_E_VERIFYMERGE:
        return resources::text(Text::resultVerifyMerge);
    case SCC_E_FIXMERGE:
        return resources::text(Text::resultFixMerge);
    case SCC_E_SHELLFAILURE:
        return resources::text(Text::resultShellFailure);
    case SCC_E_INVALIDUSER:
        return resources::text(Text::resultInvalidUser);
    case SCC_E_PROJECTALREADYOPEN:
        return resources::text(Text::resultProjectAlreadyOpen);
    case SCC_E_PROJSYNTAXERR:
        return resources::text(Text::resultProjectSyntax);
    case SCC_E_INVALIDFILEPATH:
        return resources::text(Text::resultInvalidPath);
    case SCC_E_PROJNOTOPEN:
        return resources::text(Text::resultProjectNotOpen);
    case SCC_E_NOTAUTHORIZED:
        return resources::text(Text::resultNotAuthorized);
    case SCC_E_FILESYNTAXERR:
        return resources::text(Text::resultFileSyntax);
    case SCC_E_FILENOTEXIST:
        return resources::text(Text::resultFileMissing);
    case SCC_E_CONNECTIONFAILURE:
        return resources::text(Text::resultConnectionFailure);
    case SCC_I_ADV_SUPPORT:
        return resources::text(Text::resultOptionsExist);
    case SCC_I_OPERATIONCANCELED:
        return resources::text(Text::resultCancelled);
    case SCC_I_PROJECTCREATED:
        return resources::text(Text::resultProjectCreated);
    case SCC_I_FILENOTAFFECTED:
        return resources::text(Text::resultNotAffected);
    default:
        return {};
    }
}

} // namespace provider
