// CMProperty: everything that is read from properties. It decides which property a key means for the tool in use,
// which route is active, expands command templates, and holds the process-wide state of the provider route.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/pvContextStruct.h"
#include "CM/host/IDObject.h"
#include "CM/host/IProperty.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

class CMArchiveItem;
class IUnit;

class ORC_CM_API CMProperty {
  public:
    CMProperty() = delete;

    // The route.
    static int useSccCompliantTool();
    static int getUseSCCtool();
    static void ResetIfActiveProjectChanged();
    static bool isHybridModePossible();
    static int getDLLokay();
    static const char *getSCCProviderDLL();

    // Reading and writing by key.
    static IDObject *getReferee(IDObject *object);
    static IProperty *getCMTool(IDObject *object, int where);
    static int setCMTool(const CString &name, IDObject *object);
    static IProperty *getToolProperty(const CString &key, IDObject *object, int where, bool useToolName);
    static int setToolProperty(const CString &key, const CString &value, IDObject *object);
    static int getToolPropertyValue(const CString &key, CString &value, bool useToolName);
    static int setToolPropertyValue(const CString &key, const CString &value);
    static bool isPre40Compatible();
    static CString getWorkingDir();
    static void getSCCToolName(CString &name);
    static void setSCCToolName(const CString &name);
    static int getShowCMStatus();
    static bool CheckCustomButton();
    static int closeProjectNeeded();
    static int getSccArchiveRecursive(const IUnit *unit, CString &projName, CString &auxPath);
    static int getBatchArchiveRecursive(const IUnit *unit, CString &archive);
    static short saveOnCheckout(short request);
    static bool FileNeedsATM(const CMArchiveItem *item);

    // The expansion language. 1 for success, 0 for failure.
    static int Expand(const CString &source, CMArgumentList &args, CString &result, CString &error,
                      bool useToolName);
    static int ExpandProperty(const CString &key, CMArgumentList &args, CString &result, CString &error,
                              bool useToolName);
    static int ExpandPredefined(const CString &source, CString &result, CString &error);
    static int ExtractCondition(const CString &source, int &start, int &end, CString &ifPart, CString &thenPart,
                                CString &elsePart, CString &scratch);
    static int ExtractBySearchPattern(const CString &pattern, const CString &text, CString &result, CString &error);
    static int ExtractByProperty(const CString &key, const CString &text, CString &result, int &wasSet,
                                 CString &error);

    // The state of the provider route. Every setter returns 1.
    static int getIsLoaded();
    static int setIsLoaded(int value);
    static int getIsInitialized();
    static int setIsInitialized(int value);
    static int getIsSetProjectPath();
    static int setIsSetProjectPath(int value);
    static int getIsConnected();
    static int setIsConnected(int value);
    static char *getCurrentProjectName();
    static int setCurrentProjectName(char *name);
    static void *getPvContext();
    static int setPvContext(void *context);
    static void **getPvContextPtr();
    static void *getPvOptions();
    static void **getPvOptionsPtr();
    static int setVoidPvOptions();
    static CStringList &getFileNamesList();
    static pvContextStructList &getPvContextStructList();
    /// A non-zero argument is stored and stays; returns what is stored, so that 0 asks without clearing.
    static int isSetSCC_CAP_REENTRANT(int value);
    static int isSetSCC_CAP_COMMENTCHECKOUT(int value);
    static pvContextStruct *addPvStruct();
    static pvContextStruct *findPvStructByContextName(const CString &name);
    static pvContextStruct *removePvStructByContextName(const CString &name);

    // Log lines around provider calls, assigned to the last argument.
    static void getPreSCCCallLogMsg(const CString &name, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, const char *file, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, long count, const char *const *files, CString &out);
    static void getPostSCCCallLogMsg(const CString &name, CString &out);
    static void getSCCReturnLogMsg(const CString &name, long code, CString &out);
};
