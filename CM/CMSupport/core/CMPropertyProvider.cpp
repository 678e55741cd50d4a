// CMProperty: the process-wide state of the provider route.
#include "CM/CMSupport/core/CMProperty.h"

#include <algorithm>

CString CMProperty::SCCToolName;
int CMProperty::isLoaded = 0;
int CMProperty::isInitialized = 0;
int CMProperty::isSetProjectPath = 0;
int CMProperty::isConnected = 0;
char *CMProperty::currentProjectName = nullptr;
void *CMProperty::pvContext = nullptr;
void *CMProperty::pvOptions = nullptr;

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

CList<pvContextStruct *, pvContextStruct *>::POSITION findContext(const CString &name) {
    if (name.IsEmpty()) {
        return {};
    }
    auto &contexts = CMProperty::getPvContextStructList();
    for (auto position = contexts.GetHeadPosition(); position;) {
        const auto here = position;
        if (contexts.GetNext(position)->getpvContextName().CompareNoCase(name) == 0) {
            return here;
        }
    }
    return {};
}

} // namespace

void CMProperty::getSCCToolName(CString &name) { name = SCCToolName; }
void CMProperty::setSCCToolName(const CString &name) { SCCToolName = name; }

int CMProperty::getIsLoaded() { return isLoaded; }
int CMProperty::setIsLoaded(int value) { return store(isLoaded, value); }
int CMProperty::getIsInitialized() { return isInitialized; }
int CMProperty::setIsInitialized(int value) { return store(isInitialized, value); }
int CMProperty::getIsSetProjectPath() { return isSetProjectPath; }
int CMProperty::setIsSetProjectPath(int value) { return store(isSetProjectPath, value); }
int CMProperty::getIsConnected() { return isConnected; }
int CMProperty::setIsConnected(int value) { return store(isConnected, value); }
char *CMProperty::getCurrentProjectName() { return currentProjectName; }
int CMProperty::setCurrentProjectName(char *name) { return store(currentProjectName, name); }
void *CMProperty::getPvContext() { return pvContext; }
int CMProperty::setPvContext(void *context) { return store(pvContext, context); }
void **CMProperty::getPvContextPtr() { return &pvContext; }
void *CMProperty::getPvOptions() { return pvOptions; }
void **CMProperty::getPvOptionsPtr() { return &pvOptions; }
int CMProperty::setVoidPvOptions() { return store<void *>(pvOptions, nullptr); }

CStringList &CMProperty::getFileNamesList() {
    static CStringList fileNamesList(10);
    return fileNamesList;
}

pvContextStructList &CMProperty::getPvContextStructList() {
    // Never destroyed: the contexts in it outlive projects, and at the end of the process they are the provider's.
    static auto &thePvContextStructList = *new pvContextStructList(10);
    return thePvContextStructList;
}

int CMProperty::isSetSCC_CAP_REENTRANT(int value) {
    static int bSCC_CAP_REENTRANT = 0;
    return storeSticky(bSCC_CAP_REENTRANT, value);
}

int CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(int value) {
    static int bSCC_CAP_COMMENTCHECKOUT = 0;
    return storeSticky(bSCC_CAP_COMMENTCHECKOUT, value);
}

pvContextStruct *CMProperty::addPvStruct() {
    auto *added = new pvContextStruct;
    getPvContextStructList().AddTail(added);
    return added;
}

pvContextStruct *CMProperty::findPvStructByContextName(const CString &name) {
    const auto position = findContext(name);
    return position ? getPvContextStructList().GetAt(position) : nullptr;
}

pvContextStruct *CMProperty::removePvStructByContextName(const CString &name) {
    const auto position = findContext(name);
    if (!position) {
        return nullptr;
    }
    auto *removed = getPvContextStructList().GetAt(position);
    getPvContextStructList().RemoveAt(position);
    return removed;
}
