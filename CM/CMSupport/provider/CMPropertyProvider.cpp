// CMProperty: the members that read and set the state of the provider route.
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/ProviderState.h"

namespace {

template <class VALUE> int store(VALUE &variable, VALUE value) {
    variable = value;
    return 1;
}

int storeSticky(int &variable, int value) {
    if (value != 0) {
        variable = value;
    }
    return variable;
}

pvContextStructList::POSITION findContext(const CString &name) {
    if (name.IsEmpty()) {
        return {};
    }
    const pvContextStructList &contexts = providerState().contexts;
    for (auto position = contexts.GetHeadPosition(); position;) {
        const auto here = position;
        const pvContextStruct *const context = contexts.GetNext(position);
        if (context != nullptr && context->getpvContextName().CompareNoCase(name) == 0) {
            return here;
        }
    }
    return {};
}

} // namespace

SCCdll &CMProperty::getSCCdll() { return providerState().library; }
int CMProperty::getIsLoaded() { return providerState().isLoaded; }
int CMProperty::setIsLoaded(int value) { return store(providerState().isLoaded, value); }
int CMProperty::getIsInitialized() { return providerState().isInitialized; }
int CMProperty::setIsInitialized(int value) { return store(providerState().isInitialized, value); }
int CMProperty::getIsSetProjectPath() { return providerState().isSetProjectPath; }
int CMProperty::setIsSetProjectPath(int value) { return store(providerState().isSetProjectPath, value); }
int CMProperty::getIsConnected() { return providerState().isConnected; }
int CMProperty::setIsConnected(int value) { return store(providerState().isConnected, value); }
char *CMProperty::getCurrentProjectName() { return providerState().currentProjectName; }
int CMProperty::setCurrentProjectName(char *name) { return store(providerState().currentProjectName, name); }
void *CMProperty::getPvContext() { return providerState().context; }
int CMProperty::setPvContext(void *context) { return store(providerState().context, context); }
void **CMProperty::getPvContextPtr() { return &providerState().context; }
void *CMProperty::getPvOptions() { return providerState().options; }
void **CMProperty::getPvOptionsPtr() { return &providerState().options; }
int CMProperty::setVoidPvOptions() { return store<void *>(providerState().options, nullptr); }
FileNameList &CMProperty::getFileNamesList() { return providerState().fileNames; }
CMProperty::ContextList &CMProperty::getPvContextStructList() { return providerState().contexts; }
int CMProperty::isSetSCC_CAP_REENTRANT(int value) { return storeSticky(providerState().isReentrant, value); }
int CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(int value) {
    return storeSticky(providerState().hasCheckOutComment, value);
}

pvContextStruct *CMProperty::addPvStruct() {
    auto *added = new pvContextStruct;
    providerState().contexts.AddTail(added);
    return added;
}

pvContextStruct *CMProperty::findPvStructByContextName(const CString &name) {
    const auto position = findContext(name);
    return position ? providerState().contexts.GetAt(position) : nullptr;
}

int CMProperty::removePvStructByContextName(const CString &name) {
    const auto position = findContext(name);
    if (!position) {
        return 0;
    }
    providerState().formerContexts.emplace_back(providerState().contexts.GetAt(position));
    providerState().contexts.RemoveAt(position);
    return 1;
}
