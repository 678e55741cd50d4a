#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/reload/ReloadReport.h"
#include "orchard/storage/ReadInto.h"

ATMFacade::ATMFacade(const CString &directory) : directory_(directory) {}
ATMFacade::~ATMFacade() = default;

// The first flag distinguishes a file that changed in place (0) from one of the archive (1); both are read alike.
IUnit *ATMFacade::addToModel(const CString &fileName, int /*flag*/, int, int, bool, void *) {
    orchard::Model *const model = orchard::Workspace::instance().active();
    if (model == nullptr || fileName.IsEmpty()) {
        return nullptr;
    }
    const std::string here = orchard::normalPath(directory_, platform::currentDirectory().view());
    const std::string path = orchard::normalPath(fileName, here);
    const orchard::Replacement replacement = orchard::readInto(*model, path, reloadForDupId);
    orchard::reportReloadProblems(replacement.problems);
    orchard::reportReloadWarnings(replacement.warnings);
    return replacement.unit == nullptr ? nullptr : &replacement.unit->unit();
}
