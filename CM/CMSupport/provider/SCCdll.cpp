#include "CM/CMSupport/provider/SCCdll.h"

std::array<SccEntryBase *, 24> SCCdll::entries() {
    return {
        &SccInitialize,  &SccGetProjPath,  &SccOpenProject,       &SccUninitialize, &SccCheckout, &SccCheckin,
        &SccAdd,         &SccPopulateList, &SccGetCommandOptions, &SccCloseProject, &SccGet,      &SccHistory,
        &SccProperties,  &SccQueryInfo,    &SccUncheckout,        &SccRename,       &SccRemove,   &SccSetOption,
        &SccCheckinTask, &SccSetTask,      &SccGetDefaultTask,    &SccCreateTask,   &SccShowTask, &SccListTasks};
}
