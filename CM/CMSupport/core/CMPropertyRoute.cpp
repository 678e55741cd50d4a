// Decides for CMProperty which route is active, and finds the provider.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/ProviderLookUp.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Messages.h"

#include <set>
#include <string>

int CMProperty::useSCCtool = 0;
int CMProperty::hasCheckedSccTool = 0;
int CMProperty::DLLokay = 0;
const char *CMProperty::SCCProviderDLL = nullptr;
CString CMProperty::SCCToolName;
IProject *CMProperty::theProject = nullptr;

namespace {

// Keeps a path until the process ends. The set is never destroyed, since a caller may outlive it.
const char *keep(const CString &path) {
    static auto &kept = *new std::set<std::string>;
    return kept.insert(path.str()).first->c_str();
}

} // namespace

int CMProperty::useSccCompliantTool() {
    IProject *project = CurrentWorkspace::GetActiveProject();
    const IProperty *property = findGeneralProperty(keys::useProvider);
    if (property == nullptr) {
        return 0;
    }
    if (property->getValue().CompareNoCase("YES") != 0) {
        useSCCtool = 0; // required: hasCheckedSccTool stays unchanged
        return 0;
    }
    useSCCtool = 1;
    if (project->isLoadFromMMMode()) {
        return 0; // required: useSCCtool stays 1
    }
    if (hasCheckedSccTool == 1) {
        return getUseSCCtool(); // looks up again if the project has changed
    }
    // Stored here too, so that the message below appears once:
    // Route.TellsAboutAMissingProviderOnceForTheProjectAndStaysTheProviderRoute.
    theProject = project;
    hasCheckedSccTool = 1;
    DLLokay = 1;
    if (const auto library = provider::findLibrary()) {
        SCCProviderDLL = keep(library->path);
    } else {
        notifyUserAndAsk(resources::text(resources::Text::providerNotFound), MB_ICONHAND, 0, messageLevelDefault);
        DLLokay = 0;
    }
    return 1; // even without a provider: loading it reports the failure
}

int CMProperty::getUseSCCtool() {
    ResetIfActiveProjectChanged();
    if (hasCheckedSccTool == 0) {
        useSccCompliantTool();
    }
    return useSCCtool;
}

void CMProperty::ResetIfActiveProjectChanged() {
    IProject *project = CurrentWorkspace::GetActiveProject();
    if (project != theProject) {
        theProject = project;
        hasCheckedSccTool = 0;
    }
}

bool CMProperty::isHybridModePossible() { return isGeneralPropertyTrue(keys::hybridMode, false); }

int CMProperty::getDLLokay() { return DLLokay; }

const char *CMProperty::getSCCProviderDLL() { return SCCProviderDLL; }

void CMProperty::getSCCToolName(CString &name) { name = SCCToolName; }
void CMProperty::setSCCToolName(const CString &name) { SCCToolName = name; }
