#include "CM/CMSupport/dispatch/Sequence.h"

#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"

namespace dispatch {

int providerRouteMissing() {
    notifyUserAndAsk(resources::text(resources::Text::providerRouteMissing), MB_ICONHAND, 0, messageLevelDefault);
    return 0;
}

} // namespace dispatch
