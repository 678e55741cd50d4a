#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/CMProviderFault.h"
#include "CM/CMSupport/provider/ProviderLibrary.h"
#include "CM/CMSupport/provider/ProviderProject.h"
#include "CM/CMSupport/provider/ProviderState.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"

#include <memory>
#include <utility>

using provider::LogsResult;
using provider::ProviderProject;
using resources::Text;

namespace {

constexpr auto source = "../CM/CMSupport/SCCConnectToCMRepository";

/// The association of a unit with a provider project.
struct Association {
    CString projName;
    CString auxPath;
};

int show(Text text, unsigned int flags) {
    return notifyUserAndAsk(resources::text(text), flags, 0, messageLevelDefault);
}

bool openKnown(pvContextStruct *&context, CString &projName, CString &auxPath, OutcomeReport &report) {
    ProviderProject project(projName, auxPath, report);
    return project.findDirectory() && project.initialize(context, LogsResult::yes) &&
           project.open(LogsResult::yes);
}

/// Closes and destroys all contexts of the list.
void closeAllContexts() {
    provider::CallLog log(source);
    pvContextStructList &contexts = CMProperty::getPvContextStructList();
    while (!contexts.IsEmpty()) {
        const std::unique_ptr<pvContextStruct> record(contexts.RemoveHead());
        if (record && record->getpvContextPtr() != nullptr) {
            provider::closeContext(record->getpvContextPtr(), log);
        }
    }
}

bool isNamelessProvider(const CString &name) {
    const IProperty *const property = findProviderProperty(keys::namelessProvider);
    return (property == nullptr ? CString("basalt") : property->getValue()).CompareNoCase(name) == 0;
}

bool chooseAndOpen(pvContextStruct *&context, Association &choice, int isNew, OutcomeReport &report) {
    if (isNew != 0 && CMProperty::getIsConnected() != 0 && CMProperty::isSetSCC_CAP_REENTRANT(0) == 0) {
        context = nullptr;
        closeAllContexts();
    }
    ProviderProject project(choice.projName, choice.auxPath, report);
    if (!project.findDirectory() || !project.initialize(context, LogsResult::no) || !project.choose(isNew) ||
        !project.open(LogsResult::no)) {
        return false;
    }
    if (choice.projName.IsEmpty() && choice.auxPath.IsEmpty() && isNamelessProvider(project.providerName())) {
        choice = {project.providerName(), project.providerName()};
    }
    return true;
}

void setProjectProperty(IProject &project, const char *key, const CString &value) {
    if (IProperty *const own = project.findProperty(IPN::CM, "SCC", key, IProperty::local)) {
        own->setValue(value);
        return;
    }
    IProperty added(nullptr);
    added.setName(key);
    added.setType("String");
    added.setValue(value);
    project.storeProperty(IPN::CM, "SCC", &added);
}

void setProjectAssociation(IProject &project, const Association &association) {
    setProjectProperty(project, keys::projName, association.projName);
    setProjectProperty(project, keys::auxProjPath, association.auxPath);
}

/// Closes the context of a project and destroys its record.
void closeContextOf(const CString &projName) {
    pvContextStruct *const found = CMProperty::findPvStructByContextName(projName);
    if (found == nullptr) {
        return;
    }
    provider::CallLog log(source);
    provider::closeContext(found->getpvContextPtr(), log);
    // Required: the last record leaves the list, whichever was found. The entry of the found one becomes null
    // (ConnectAgain.TakesTheLastRecordOffTheListWhicheverItCloses).
    pvContextStructList &contexts = CMProperty::getPvContextStructList();
    contexts.SetAt(contexts.Find(found), nullptr);
    const std::unique_ptr<pvContextStruct> closed(found);
    provider::dropLastContext();
}

/// Asks the user whether to give up the unit's association. Returns whether it was removed.
bool giveUp(const Association &association, IProject &project, IUnit &unit) {
    if (show(Text::providerConnectAgain, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES) {
        return false;
    }
    closeContextOf(association.projName);
    setProjectAssociation(project, {});
    unit.setSccArchive({}, {});
    return true;
}

bool connectToKnown(Association &association, OutcomeReport &report) {
    pvContextStruct *context = CMProperty::findPvStructByContextName(association.projName);
    if (context != nullptr) {
        return true;
    }
    if (!openKnown(context, association.projName, association.auxPath, report)) {
        return false;
    }
    CMProperty::setIsConnected(1);
    return true;
}

/// `choice` is the proposal on entry.
bool connectToChosen(Association &choice, IProject &project, OutcomeReport &report) {
    pvContextStruct *context = nullptr;
    if (!chooseAndOpen(context, choice, 1, report)) {
        return false;
    }
    setProjectAssociation(project, choice);
    project.setSccArchive(choice.projName, choice.auxPath); // of the project, also if a unit was selected
    show(Text::providerConnected, MB_ICONINFORMATION);
    CMProperty::setIsConnected(1);
    return true;
}

/// Shows why there is no usable context.
void reject(OutcomeReport &report, CMOutcome::Kind kind, const CString &reason) {
    notifyUserAndAsk(reason, MB_ICONHAND, 0, messageLevelDefault);
    report.fail(kind, reason);
}

/// Assigns the context of getSccContext and returns its result.
int openContext(pvContextStruct *&context, IUnit *unit, OutcomeReport &report) {
    context = nullptr;
    if (unit == nullptr) {
        unit = CurrentWorkspace::GetActiveProject();
    }
    if (unit == nullptr) {
        return 0;
    }
    OQ_disableSE(); // required: stays disabled after the two early returns
    try {
        Association association;
        if (CMProperty::getSccArchiveRecursive(unit, association.projName, association.auxPath) == 0) {
            reject(report, CMOutcome::Kind::noTool, resources::text(Text::providerNotConnected));
            return 0;
        }
        context = CMProperty::findPvStructByContextName(association.projName);
        if (context == nullptr) {
            if (!openKnown(context, association.projName, association.auxPath, report)) {
                return 0;
            }
            CMProperty::setIsConnected(1);
        }
        provider::reportLibrary(report);
    } catch (const CMProviderFault &fault) {
        reject(report, CMOutcome::Kind::failed, fault.what());
    } catch (...) { // required: nothing is shown
        report.fail(CMOutcome::Kind::failed, Text::providerThrew);
    }
    OQ_enableSE();
    return 1;
}

} // namespace

int SCCConnectToCMRepository::operator()(CMUnitList &units, CMArgumentList & /*args*/,
                                         CMDiagnosticList & /*diags*/) {
    IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return 0;
    }
    IUnit *const unit = units.IsEmpty() ? project : units.GetHead();
    if (unit == nullptr) {
        return 0;
    }
    OutcomeReport report;
    Association association;
    const bool isAssociated =
        CMProperty::getSccArchiveRecursive(unit, association.projName, association.auxPath) != 0;
    const bool isConnected = isAssociated && !giveUp(association, *project, *unit)
                                 ? connectToKnown(association, report)
                                 : connectToChosen(association, *project, report);
    provider::reportLibrary(report);
    report.send();
    return isConnected ? 1 : 0;
}

int SCCConnectToCMRepository::getSccContext(pvContextStruct *&context, IUnit *unit) {
    OutcomeReport unreported;
    return openContext(context, unit, unreported);
}

int SCCConnectToCMRepository::connectLazy(IUnit * /*unit*/, pvContextStruct *&context, CString &projName,
                                          CString &auxPath) {
    OutcomeReport unreported;
    return openKnown(context, projName, auxPath, unreported) ? 1 : 0;
}

int SCCConnectToCMRepository::connectIt(IUnit * /*unit*/, pvContextStruct *&context, CString &projName,
                                        CString &auxPath, int isNew) {
    OutcomeReport unreported;
    Association choice{projName, auxPath};
    const bool isOpen = chooseAndOpen(context, choice, isNew, unreported);
    projName = choice.projName;
    auxPath = choice.auxPath;
    return isOpen ? 1 : 0;
}

pvContextStruct *provider::contextFor(IUnit *unit, OutcomeReport &report) {
    pvContextStruct *context = nullptr;
    openContext(context, unit, report);
    return context;
}
