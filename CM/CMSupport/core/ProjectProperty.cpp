#include "CM/CMSupport/core/ProjectProperty.h"

#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"

const IProperty *findProjectProperty(const CString &metaclass, const CString &key) {
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    return project == nullptr ? nullptr : project->findProperty(IPN::CM, metaclass, key, IProperty::inherited);
}

const IProperty *findGeneralProperty(const CString &key) { return findProjectProperty(IPN::General, key); }

bool isGeneralPropertyTrue(const CString &key, bool otherwise) {
    const IProperty *const property = findGeneralProperty(key);
    return property == nullptr ? otherwise : property->getBool();
}

const IProperty *findProviderProperty(const CString &key) {
    return findProjectProperty(keys::providerMetaclass, key);
}

bool isProviderPropertyTrue(const CString &key) {
    const IProperty *const property = findProviderProperty(key);
    return property != nullptr && property->getBool();
}
