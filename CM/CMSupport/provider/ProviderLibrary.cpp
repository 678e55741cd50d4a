#include "CM/CMSupport/provider/ProviderLibrary.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/ProviderLookUp.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/CMSupport/resources/Format.h"

using resources::Text;

namespace provider {

void loadLibrary() {
    CMProperty::getSCCdll().LoadDll(CMProperty::getSCCProviderDLL());
    CMProperty::setIsLoaded(1); // also if it could not be loaded
}

void reportLibrary(OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    if (library.SccInitialize.isExported()) {
        return;
    }
    const auto registered = findLibrary();
    if (!registered) {
        report.fail(CMOutcome::Kind::noTool, Text::providerNotFound);
    } else if (library.isHeld()) {
        report.fail(CMOutcome::Kind::noTool,
                    resources::format(Text::providerNotOne, {registered->path, registered->key}));
    } else {
        report.fail(
            CMOutcome::Kind::noTool,
            resources::format(Text::providerNotLoaded, {registered->path, library.loadError(), registered->key}));
    }
}

} // namespace provider
