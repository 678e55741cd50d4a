// Implements the members of CMFacade that start and end the work of a provider.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/SCCFacade.h"

int CMFacade::RunToolExe() { return SCCFacade::SCCRunToolExe(); }

int CMFacade::doSetUpSCC() { return CMProperty::useSccCompliantTool() != 0 ? SCCFacade::doSetUpSCC() : 1; }

// Required: cleans up, and does not close the project with the provider. Test:
// ProviderEntries.CloseAndCleanUpCleanUpOnlyALoadedProviderAndReturnOne.
int CMFacade::doCloseProjectSCC() { return doCleanUpSCC(); }

int CMFacade::doCleanUpSCC() {
    if (CMProperty::getIsLoaded() != 0) {
        SCCFacade::doCleanUpSCC();
    }
    return 1;
}
