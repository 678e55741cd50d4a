// CMProperty: which route is active.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/ProviderLookUp.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/Messages.h"

#include <set>
#include <string>

int CMProperty::useSCCtool = 0;
int CMProperty::hasCheckedSccTool = 0;
int CMProperty::DLLokay = 0;
const char *CMProperty::SCCProviderDLL = nullptr;
IProject *CMProperty::theProject = nullptr;

namespace {

// A path that was handed out stays for good. The set is never destroyed, for a caller may outlive it.
const char *keep(const CString &path) {
    static auto &kept = *new std::set<std::string>;
    return kept.insert(path.str()).first->c_str();
}

} // namespace

int CMProperty::useSccCompliantTool() {
    static const CString key("UseSCCtool");
    IProject *project = CurrentWorkspace::GetActiveProject();
    const IProperty *property =
        project != nullptr ? project->findProperty(IPN::CM, IPN::General, key, IProperty::inherited) : nullptr;
    if (property == nullptr) {
        return 0;
    }
    if (property->getValue().CompareNoCase("YES") != 0) {
        useSCCtool = 0; // hasCheckedSccTool stays as it was: deliberate
        return 0;
    }
    useSCCtool = 1;
    if (project->isLoadFromMMMode()) {
        return 0; // while useSCCtool stays 1: deliberate
    }
    if (hasCheckedSccTool == 1) {
        return getUseSCCtool(); // which looks again if the project has changed
    }
    theProject = project; // the project for which the look-up holds, so that its message comes once
    hasCheckedSccTool = 1;
    DLLokay = 1;
    if (const auto path = provider::findLibrary()) {
        SCCProviderDLL = keep(*path);
    } else {
        notifyUserAndAsk(resources::text(resources::Text::providerNotFound), MB_ICONHAND, 0, messageLevelDefault);
        DLLokay = 0;
    }
    return 1; // without a provider too: it is missed when it is to be loaded
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

bool CMProperty::isHybridModePossible() {
    static const CString key("UseHybridModeWhenPossible");
    const IProject *project = CurrentWorkspace::GetActiveProject();
    const IProperty *property =
        project != nullptr ? project->findProperty(IPN::CM, IPN::General, key, IProperty::inherited) : nullptr;
    return property != nullptr && property->getBool();
}

int CMProperty::getDLLokay() { return DLLokay; }

const char *CMProperty::getSCCProviderDLL() { return SCCProviderDLL; }
