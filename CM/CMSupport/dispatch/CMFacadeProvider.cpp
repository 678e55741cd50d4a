// CMFacade: the members by which the host starts and ends the work of a provider.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/SCCFacade.h"

int CMFacade::RunToolExe() { return SCCFacade::SCCRunToolExe(); }

int CMFacade::doSetUpSCC() { return CMProperty::useSccCompliantTool() != 0 ? SCCFacade::doSetUpSCC() : 1; }

// Closing a project cleans up too and doesn't close it with the provider, deliberately.
int CMFacade::doCloseProjectSCC() { return doCleanUpSCC(); }

int CMFacade::doCleanUpSCC() {
    if (CMProperty::getIsLoaded() != 0) {
        SCCFacade::doCleanUpSCC();
    }
    return 1;
}
