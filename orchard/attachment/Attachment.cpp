#include "orchard/attachment/Attachment.h"

#include "orchard/messages/CMWindow.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/base/LogFile.h"
#include "orchard/storage/LibraryFacade.h"

#include <stdexcept>

namespace orchard {

Attachment::Attachment(Hooks hooks) {
    if (!hooks.logFile.empty() && !setLogFile(hooks.logFile)) {
        throw std::runtime_error("the log file '" + hooks.logFile.string() + "' can't be opened for writing");
    }
    setDialogDriver(hooks.dialogs);
    setCMOutputStream(hooks.cmOutput);
    setRunWatch(std::move(hooks.runs));
    setCMFacade(hooks.library);
}

Attachment::~Attachment() {
    for (auto restore = restore_.rbegin(); restore != restore_.rend(); ++restore) {
        (*restore)();
    }
    setCMFacade(nullptr);
    setRunWatch({});
    setCMOutputStream(nullptr);
    setDialogDriver(nullptr);
    setLogFile({});
}

} // namespace orchard
