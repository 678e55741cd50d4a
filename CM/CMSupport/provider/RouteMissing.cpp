#include "CM/CMSupport/provider/RouteMissing.h"

#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"

namespace provider {

int routeMissing() {
    notifyUserAndAsk(resources::text(resources::Text::providerRouteMissing), MB_ICONHAND, 0, messageLevelDefault);
    OutcomeReport report;
    report.fail(CMOutcome::Kind::noTool, resources::Text::providerRouteMissing);
    report.send();
    return 0;
}

} // namespace provider
