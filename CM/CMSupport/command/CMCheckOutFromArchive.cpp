#include "CM/CMSupport/command/CMCheckOutFromArchive.h"

#include "CM/CMSupport/command/CheckOutRun.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"

namespace {

class Run : public command::CheckOutRun<CMArchiveItem> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CheckOutRun({.property = IPN::CMCheckOutFromArchive,
                       .source = "../CM/CMSupport/CheckOutFromArchive",
                       .beforeRun = "Executing the following command to check out the file from the archive: ",
                       .afterRun = "Check out from the archive command returned the following: ",
                       .guard = CMORYHandler::ORYCheckOut},
                      args, error) {}

  protected:
    void followUp(CMArchiveItem &item, CMORYHandler *guard) override {
        const CString type = item.getType();
        if (type.IsEmpty()) {
            return; // not a file of the model; the guard rolls back
        }
        guard->commit();
        CString path;
        if (isProjectFileExtension(type)) {
            CString toolPath;
            guard->getUnitPath(path, toolPath);
        }
        if (path.IsEmpty()) {
            path = item.getFileNameForRepFiles();
        }
        IUnit *const known = IUnit::getByFile(path);
        log("Performing ATM for the file " + path);
        if (IUnit *const unit = reload(known, item, path)) {
            report().reloaded(CMOutcome::Reload::content, unit);
        } else {
            core::reportLoadingFailure(item.getLocalPath() + oqPathSeparator() + item.getFileName(), errorText());
            report().notLoaded(errorText());
            setResult(0); // the item stays in the list
        }
    }

  private:
    static IUnit *reload(IUnit *known, const CMArchiveItem &item, const CString &path) {
        if (known != nullptr && QuickATMFacade::CanReloadUnit(known, 0) &&
            item.getLocalPath() == known->getOwnDirectory()) {
            return QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(known, 0, 0);
        }
        return core::loadIntoModel(item.getLocalPath(), path);
    }
};

} // namespace

int CMCheckOutFromArchive::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    core::saveBeforeCheckOut(items);
    Run run(args, error);
    if (!items.IsEmpty()) {
        core::openReloads();
    }
    run.workAll(items);
    if (!items.IsEmpty()) {
        core::closeReloads();
    }
    return run.result();
}
