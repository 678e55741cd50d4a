// CMProperty: everything that is read from properties. It decides which property a key means for the tool in use,
// which route is active, expands command templates, and holds the process-wide state of the provider route.
//
// A property is addressed by subject, metaclass and key. The subject is always IPN::CM; the metaclass is the name
// of a tool, IPN::CMGeneral for what holds for all tools, or a fixed one. In all functions `where` is an
// IProperty::IPropertyWhere, and a property that is handed back belongs to the host. Nothing here throws, and a
// look-up that finds nothing is told by the return value alone; the debug trace says what was missing.
// User-interface thread only.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/pvContextStruct.h"
#include "CM/host/IDObject.h"
#include "CM/host/IProperty.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

class CMArchiveItem;
class IProject;
class IUnit;

class ORC_CM_API CMProperty {
  public:
    CMProperty() = delete;

    // The route.

    /// 1 if the active project works through a provider, 0 if through a tool's commands or if none is open. Looks
    /// for the provider in the registry once for each project; if it finds none, the user is told, the answer
    /// stays 1, and getDLLokay() turns 0. A project loaded for a model merge gets 0, though getUseSCCtool()
    /// says 1.
    static int useSccCompliantTool();
    /// The last decision about the route: 1 for the provider's. Once the provider was looked up, it is made anew
    /// only after a change of project; without a project it is what the last one gave.
    static int getUseSCCtool();
    /// Forgets the provider look-up if another project has become active since.
    static void ResetIfActiveProjectChanged();
    /// The boolean property "UseHybridModeWhenPossible" of the active project; false without either.
    static bool isHybridModePossible();
    /// 1 if the last look-up found a provider whose file exists.
    static int getDLLokay();
    /// The full path of the provider library, or null before one was found. The text stays valid for good.
    static const char *getSCCProviderDLL();

    // Reading and writing by key.

    /// The object on which properties are looked up: `object` itself; for null the active project's component if
    /// that is a stub, else the project's configuration. Null if there is none.
    static IDObject *getReferee(IDObject *object);
    /// The property that holds the tool's name, looked up on the referee of `object`, or null.
    static IProperty *getCMTool(IDObject *object, int where);
    /// Sets the tool's name on the referee itself: changes its own property, or gives it a copy of the inherited
    /// one. Always 1, also if there was nothing to set it on or to copy.
    static int setCMTool(const CString &name, IDObject *object);
    /// The property that `key` means for the tool in use, or null: first that of the tool (on the provider route
    /// that of the metaclass "SCC", or of the provider's name if `useToolName`), with `where` deciding where it
    /// may stand; then the general one from wherever it is inherited, also for a local look-up.
    static IProperty *getToolProperty(const CString &key, IDObject *object, int where, bool useToolName);
    /// Sets a property of the tool on the referee itself, as setCMTool does. 1; 0 for a key that neither the tool
    /// nor the general properties know, and nothing is made then.
    static int setToolProperty(const CString &key, const CString &value, IDObject *object);
    /// Reads a property of the tool from the active project. 1, or 0 with `value` as it was.
    static int getToolPropertyValue(const CString &key, CString &value, bool useToolName);
    /// Sets a property of the tool on the active project. 1, or 0 if the key is not known.
    static int setToolPropertyValue(const CString &key, const CString &value);
    /// Whether the workspace is laid out in the old way: "SupportTreeRepository" has a value.
    static bool isPre40Compatible();
    /// The directory in which tools run: the project's directory for units, or that of the project file in the old
    /// layout; the empty text without a project.
    static CString getWorkingDir();
    /// Assigns the name of the provider in use; the empty text before one is connected.
    static void getSCCToolName(CString &name);
    static void setSCCToolName(const CString &name);
    /// Whether unit status is on display; without an active project the last answer.
    static int getShowCMStatus();
    /// Whether the custom button has both a command and an image.
    static bool CheckCustomButton();
    /// 0 if the active project names a provider project in "ProjName", else 1; 1 without a project.
    static int closeProjectNeeded();
    /// The provider archive of a unit: its own or that of an owner, else that of the active project. Non-zero if
    /// there is one; the out-arguments are assigned as far as something was found.
    static int getSccArchiveRecursive(const IUnit *unit, CString &projName, CString &auxPath);
    /// The archive of a unit on the command route: its own or that of an owner, else the main archive. Non-zero if
    /// `archive` is not empty.
    static int getBatchArchiveRecursive(const IUnit *unit, CString &archive);
    /// Whether the model is to be saved before a check out that asks here: 1 sets it, 0 clears it, any other
    /// number only asks. Returns the flag, which starts at 1.
    static short saveOnCheckout(short request);
    /// Whether the file of the item has to be reloaded after a change: all but embedded files. False for null.
    static bool FileNeedsATM(const CMArchiveItem *item);

    // The expansion language. 1 for success, 0 for failure. `error` and `scratch` are passed on and not written
    // here; ExpandPredefined lets oqGetRoot write its `error`.

    /// Expands a template: conditionals first, then variables. `result` becomes the text, also on failure, when it
    /// is half expanded; an empty template or one whose conditionals leave nothing gives 1 and leaves it as it
    /// was. A template that refers to itself, or that grows without end, is a failure, with a line in the log.
    static int Expand(const CString &source, CMArgumentList &args, CString &result, CString &error,
                      bool useToolName);
    /// Expands the value of a property; 0 if there is none. `useToolName` is that of getToolProperty.
    static int ExpandProperty(const CString &key, CMArgumentList &args, CString &result, CString &error,
                              bool useToolName);
    /// Replaces the first of each predefined variable: $OQROOT, $projectname, $currentdirectory, $orpdirectory,
    /// $projectunitdirname, $temp. Returns what oqGetRoot returned, whether or not anything was replaced.
    static int ExpandPredefined(const CString &source, CString &result, CString &error);
    /// Finds the first conditional. 1 with the positions of its parentheses and its trimmed parts; without one 0,
    /// both positions -1, and the parts empty.
    static int ExtractCondition(const CString &source, int &start, int &end, CString &ifPart, CString &thenPart,
                                CString &elsePart, CString &scratch);
    /// Matches `pattern`, without regard to case, against `text`: 1, with group 1 in `result`; else 0, with
    /// `result` as it was.
    static int ExtractBySearchPattern(const CString &pattern, const CString &text, CString &result,
                                      CString &error);
    /// The same with the value of a property as the pattern. An empty value gives 1, `wasSet` 0 and an empty
    /// `result`; a missing property 0 and leaves `wasSet` as it was.
    static int ExtractByProperty(const CString &key, const CString &text, CString &result, int &wasSet,
                                 CString &error);

    // The state of the provider route: plain storage. Every setter returns 1.

    static int getIsLoaded();
    static int setIsLoaded(int value);
    static int getIsInitialized();
    static int setIsInitialized(int value);
    static int getIsSetProjectPath();
    static int setIsSetProjectPath(int value);
    static int getIsConnected();
    static int setIsConnected(int value);
    /// The provider's project name as it was set, or null. The text belongs to who set it.
    static char *getCurrentProjectName();
    static int setCurrentProjectName(char *name);
    static void *getPvContext();
    static int setPvContext(void *context);
    static void **getPvContextPtr();
    /// The command options that were chosen last, or null; setVoidPvOptions() makes them null.
    static void *getPvOptions();
    static void **getPvOptionsPtr();
    static int setVoidPvOptions();
    /// File names for the provider route.
    static CStringList &getFileNamesList();
    /// The open contexts. Who takes one off the list deletes it.
    static pvContextStructList &getPvContextStructList();
    /// Capabilities of the provider. A non-zero argument is stored and stays; returns what is stored, so that 0
    /// asks without clearing.
    static int isSetSCC_CAP_REENTRANT(int value);
    static int isSetSCC_CAP_COMMENTCHECKOUT(int value);
    /// Makes a context by `new` at the tail of the list.
    static pvContextStruct *addPvStruct();
    /// The first context of this name, in any case; null if there is none or the name is empty.
    static pvContextStruct *findPvStructByContextName(const CString &name);
    /// The same, and takes it off the list; it belongs to the caller then.
    static pvContextStruct *removePvStructByContextName(const CString &name);

    // Log lines around provider calls, assigned to the last argument; left alone for a null file or array.

    static void getPreSCCCallLogMsg(const CString &name, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, const char *file, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, long count, const char *const *files, CString &out);
    static void getPostSCCCallLogMsg(const CString &name, CString &out);
    static void getSCCReturnLogMsg(const CString &name, long code, CString &out);

    /// The name of the provider in use, set by the code that connects.
    static CString SCCToolName;

  private:
    static int useSCCtool;             // the last decision about the route
    static int hasCheckedSccTool;      // 1 once the registry was looked up for theProject
    static int DLLokay;                // 1 if that found a usable provider
    static const char *SCCProviderDLL; // its path, never freed: others may hold it
    static IProject *theProject;       // only compared, never followed
    static int showCMStatus;
    static int isLoaded;
    static int isInitialized;
    static int isSetProjectPath;
    static int isConnected;
    static char *currentProjectName;
    static void *pvContext;
    static void *pvOptions;
    static CString customButtonCmdVal; // reserved for the custom button
    static CString customButtonImgVal;
};
