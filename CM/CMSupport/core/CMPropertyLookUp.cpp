// Finds the property that a key means, and writes it, for CMProperty.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/ToolInUse.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"

namespace {

IProperty *find(const IDObject &referee, const CString &metaclass, const CString &key, int where) {
    return referee.findProperty(IPN::CM, metaclass, key, where);
}

// Adds a copy of an inherited property, with another value, to the referee.
void storeCopy(IDObject &referee, const CString &metaclass, const IProperty &inherited, const CString &value) {
    IProperty own(&inherited);
    own.setValue(value);
    referee.storeProperty(IPN::CM, metaclass, &own);
}

} // namespace

IDObject *CMProperty::getReferee(IDObject *object) {
    if (object != nullptr) {
        return object;
    }
    IProject *project = CurrentWorkspace::GetActiveProject();
    IComponent *component = project != nullptr ? project->getComponent() : nullptr;
    if (component == nullptr) {
        return nullptr;
    }
    if (component->isStub()) {
        return component;
    }
    IDObject *configuration = project->getConfiguration();
    if (configuration == nullptr) {
        debugTrace({"cannot get valid referee\n"});
    }
    return configuration;
}

IProperty *CMProperty::getCMTool(IDObject *object, int where) {
    const IDObject *referee = getReferee(object);
    IProperty *tool = referee != nullptr ? find(*referee, IPN::CMGeneral, IPN::CMTool, where) : nullptr;
    if (tool == nullptr) {
        debugTrace({"could not find the property that states which is the CM tool\n"});
    }
    return tool;
}

int CMProperty::setCMTool(const CString &name, IDObject *object) {
    IDObject *referee = getReferee(object);
    if (IProperty *own = getCMTool(referee, IProperty::local)) {
        own->setValue(name);
        return 1;
    }
    const IProperty *inherited = getCMTool(referee, IProperty::inherited);
    if (referee != nullptr &&
        inherited != nullptr) { // required: the trace shows the look-up even without a referee
        storeCopy(*referee, IPN::CMGeneral, *inherited, name);
    }
    return 1;
}

IProperty *CMProperty::getToolProperty(const CString &key, IDObject *object, int where, bool useToolName) {
    IDObject *referee = getReferee(object);
    if (referee == nullptr) {
        return nullptr;
    }
    const auto metaclass = toolMetaclass(*referee, where, useToolName);
    IProperty *found = metaclass ? find(*referee, *metaclass, key, where) : nullptr;
    if (found == nullptr) {
        // Required: a local look-up finds an inherited general value too.
        found = find(*referee, IPN::CMGeneral, key, IProperty::inherited);
    }
    if (found == nullptr) {
        debugTrace({"could not find the property '", key, "' for ", metaclass.value_or(CString()), "\n"});
    }
    return found;
}

int CMProperty::setToolProperty(const CString &key, const CString &value, IDObject *object) {
    if (IProperty *own = getToolProperty(key, object, IProperty::local, false)) {
        own->setValue(value); // required: this may be an inherited general one
        return 1;
    }
    const IProperty *inherited = getToolProperty(key, object, IProperty::inherited, false);
    if (inherited == nullptr) {
        return 0;
    }
    IDObject *referee = getReferee(object);
    const IProperty *tool = referee != nullptr ? getCMTool(referee, IProperty::inherited) : nullptr;
    if (tool != nullptr) {
        storeCopy(*referee, tool->getValue(), *inherited, value);
    }
    return 1;
}

int CMProperty::getToolPropertyValue(const CString &key, CString &value, bool useToolName) {
    const IProperty *property =
        getToolProperty(key, CurrentWorkspace::GetActiveProject(), IProperty::inherited, useToolName);
    if (property == nullptr) {
        return 0;
    }
    value = property->getValue();
    return 1;
}

int CMProperty::setToolPropertyValue(const CString &key, const CString &value) {
    return setToolProperty(key, value, CurrentWorkspace::GetActiveProject()) != 0 ? 1 : 0;
}
