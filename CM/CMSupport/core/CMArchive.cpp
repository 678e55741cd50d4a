#include "CM/CMSupport/core/CMArchive.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/platform/Files.h"
#include "CM/platform/PathText.h"

namespace {

/// Returns the tool property of the active project, or null.
const IProperty *projectProperty(const CString &key) {
    IProject *const project = CurrentWorkspace::GetActiveProject();
    return project == nullptr ? nullptr : CMProperty::getToolProperty(key, project, IProperty::inherited, false);
}

} // namespace

int CMArchive::isNamed(const CString &name) const {
    return name.CompareNoCase("archive") == 0 || name.CompareNoCase("archivedirectory") == 0 ? 1 : 0;
}

CString CMArchive::substitute(const CString &name) {
    if (isNamed(name) == 0) {
        return name;
    }
    CString value = archive_.IsEmpty() ? getMainArchive() : archive_;
    if (name.CompareNoCase("archive") == 0) {
        return value;
    }
    if (!platform::canStat(value)) {
        debugTrace({"Problem getting _tstat information about ", value, "\n"});
        return value;
    }
    return platform::isRegularFile(value) ? CString(platform::directoryOfPath(value)) : value;
}

int CMArchive::getArchiveSelection() {
    const IProperty *const property = projectProperty(IPN::CMArchiveSelection);
    const CString value = property == nullptr ? CString() : property->getValue();
    if (value.CompareNoCase("Directory") == 0) {
        return 0;
    }
    return value.CompareNoCase("File") == 0 ? 1 : 2;
}

CString CMArchive::getMainArchive() {
    CString archive;
    if (const IProperty *const property = projectProperty(IPN::CMArchive)) {
        CString error;
        CMProperty::ExpandPredefined(property->getValue(), archive,
                                     error); // required: the result counts even on failure
    }
    return archive;
}

int CMArchive::setMainArchive(const CString &value) {
    IProject *const project =
        CurrentProject::Project() == nullptr ? nullptr : CurrentWorkspace::GetActiveProject();
    return project == nullptr ? 0 : CMProperty::setToolProperty(IPN::CMArchive, value, project);
}
