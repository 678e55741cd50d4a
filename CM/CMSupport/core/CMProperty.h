// Reads and writes the library's properties. The class decides which property a key means for the tool in use and
// which route is active, expands command templates, and gives access to the process-wide state of the provider
// route.
//
// A property is addressed by subject, metaclass and key. The subject is always IPN::CM; the metaclass is the name
// of a tool, IPN::CMGeneral for properties of all tools, or a fixed one. In all functions `where` is an
// IProperty::IPropertyWhere, and the host owns a returned property. Nothing here throws. Only the return value
// reports that a look-up found nothing; the debug trace says what was missing. User-interface thread only.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/host/IDObject.h"
#include "CM/host/IProperty.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class CMArchiveItem;
class FileNameList;
class IProject;
class IUnit;
class SCCdll;
class pvContextStruct;

class ORC_CM_API CMProperty {
  public:
    CMProperty() = delete;

    // The route.

    /// Returns 1 if the active project works through a provider, 0 if it works through a tool's commands or if no
    /// project is open. Looks for the provider in the registry once for each project. If it finds none, it shows a
    /// message, the result stays 1, and getDLLokay() becomes 0. For a project loaded for a model merge the result
    /// is 0, although getUseSCCtool() may return 1.
    static int useSccCompliantTool();
    /// Returns the last decision about the route: 1 for the provider route. After the provider has been looked up,
    /// the decision is made again only after a change of project; without a project it stays that of the last
    /// project.
    static int getUseSCCtool();
    /// Discards the result of the provider look-up if another project has become active since.
    static void ResetIfActiveProjectChanged();
    /// Returns the boolean property "UseHybridModeWhenPossible" of the active project; false without a project or
    /// the property.
    static bool isHybridModePossible();
    /// Returns 1 if the last look-up found a provider whose file exists.
    static int getDLLokay();
    /// Returns the full path of the provider library, or null if none has been found yet. The text stays valid
    /// until the process ends.
    static const char *getSCCProviderDLL();

    // Reading and writing by key.

    /// Returns the object on which properties are looked up: `object` itself; for null, the active project's
    /// component if that is a stub, else the project's configuration. Null if there is none.
    static IDObject *getReferee(IDObject *object);
    /// Returns the property that contains the tool's name, looked up on the referee of `object`, or null.
    static IProperty *getCMTool(IDObject *object, int where);
    /// Sets the tool's name on the referee itself: changes its own property, or adds a copy of the inherited one.
    /// Always returns 1, even without a referee or a property to copy.
    static int setCMTool(const CString &name, IDObject *object);
    /// Returns the property that `key` means for the tool in use, or null. First looks for the tool's property in
    /// the places that `where` allows (on the provider route, in the metaclass "SCC", or in that with the
    /// provider's name if `useToolName`). Then looks for the general property, always including inherited ones.
    static IProperty *getToolProperty(const CString &key, IDObject *object, int where, bool useToolName);
    /// Sets a property of the tool on the referee itself, as setCMTool does. Returns 1; 0, with nothing added, for
    /// a key that neither the tool nor the general properties have.
    static int setToolProperty(const CString &key, const CString &value, IDObject *object);
    /// Reads a property of the tool from the active project. Returns 1; or 0, with `value` unchanged.
    static int getToolPropertyValue(const CString &key, CString &value, bool useToolName);
    /// Sets a property of the tool on the active project. Returns 1, or 0 if the key is unknown.
    static int setToolPropertyValue(const CString &key, const CString &value);
    /// Returns whether the workspace has the old layout: "SupportTreeRepository" has a value.
    static bool isPre40Compatible();
    /// Returns the directory in which tools run: the project's directory for units or, in the old layout, that of
    /// the project file; empty without a project.
    static CString getWorkingDir();
    /// Assigns the name of the provider in use; empty until one is connected.
    static void getSCCToolName(CString &name);
    static void setSCCToolName(const CString &name);
    /// Returns whether unit status is displayed; without an active project, the last result.
    static int getShowCMStatus();
    /// Returns whether the custom button has both a command and an image.
    static bool CheckCustomButton();
    /// Returns 0 if the active project names a provider project in its property "ProjName", otherwise 1.
    static int closeProjectNeeded();
    /// Looks up the provider archive of a unit: its own or that of an owner, else that of the active project.
    /// Returns non-zero if there is one. Assigns only the out-arguments for which it found a value.
    static int getSccArchiveRecursive(const IUnit *unit, CString &projName, CString &auxPath);
    /// Looks up the archive of a unit on the command route: its own or that of an owner, else the main archive.
    /// Returns non-zero if `archive` is not empty.
    static int getBatchArchiveRecursive(const IUnit *unit, CString &archive);
    /// Controls whether a recursive check out from the archive saves the model first: 1 sets the flag, 0 clears
    /// it, any other number leaves it unchanged. Returns the flag, which is 1 at the start.
    static short saveOnCheckout(short request);
    /// Returns whether the item's file has to be reloaded after a change: true for all but embedded files, false
    /// for null.
    static bool FileNeedsATM(const CMArchiveItem *item);

    // The expansion language. The functions return 1 for success, 0 for failure. They don't use `error` and
    // `scratch`; only ExpandPredefined passes `error` to oqGetRoot, which may set it.

    /// Expands a template: conditionals first, then variables. `result` receives the text, on failure a partly
    /// expanded one. For an empty template, or one whose conditionals leave nothing, returns 1 and leaves `result`
    /// unchanged. A template that refers to itself or grows without limit is a failure, with a line in the log.
    static int Expand(const CString &source, CMArgumentList &args, CString &result, CString &error,
                      bool useToolName);
    /// Expands the value of a property; returns 0 if there is none. `useToolName` is that of getToolProperty.
    static int ExpandProperty(const CString &key, CMArgumentList &args, CString &result, CString &error,
                              bool useToolName);
    /// Replaces the first occurrence of each predefined variable: $OQROOT, $projectname, $currentdirectory,
    /// $orpdirectory, $projectunitdirname, $temp. Returns what oqGetRoot returned, whether or not anything was
    /// replaced.
    static int ExpandPredefined(const CString &source, CString &result, CString &error);
    /// Finds the first conditional. Returns 1 with the positions of its parentheses and its trimmed parts; without
    /// one, returns 0 with both positions -1 and the parts empty.
    static int ExtractCondition(const CString &source, int &start, int &end, CString &ifPart, CString &thenPart,
                                CString &elsePart, CString &scratch);
    /// Matches `pattern` against `text`, ignoring case. Returns 1 with group 1 in `result`; else 0 with `result`
    /// unchanged.
    static int ExtractBySearchPattern(const CString &pattern, const CString &text, CString &result,
                                      CString &error);
    /// Does the same with the value of a property as the pattern. For an empty value, returns 1 with `wasSet` 0
    /// and an empty `result`; for a missing property, returns 0 and leaves `wasSet` unchanged.
    static int ExtractByProperty(const CString &key, const CString &text, CString &result, int &wasSet,
                                 CString &error);

    // The state of the provider route, stored in the provider folder. Every setter returns 1.

    /// The binding to the provider's library: the only one of the process.
    static SCCdll &getSCCdll();
    /// Non-zero once the library has been loaded, or could not be; nothing sets it back.
    static int getIsLoaded();
    static int setIsLoaded(int value);
    static int getIsInitialized();
    static int setIsInitialized(int value);
    static int getIsSetProjectPath();
    static int setIsSetProjectPath(int value);
    static int getIsConnected();
    static int setIsConnected(int value);
    /// Returns the provider's project name as it was set, or null. The code that set it owns the text.
    static char *getCurrentProjectName();
    static int setCurrentProjectName(char *name);
    static void *getPvContext();
    static int setPvContext(void *context);
    static void **getPvContextPtr();
    /// Return the command options that were chosen last, or null; setVoidPvOptions() makes them null.
    static void *getPvOptions();
    static void **getPvOptionsPtr();
    static int setVoidPvOptions();
    /// The names that the provider has enumerated. The caller of SccPopulateList empties the list first.
    static FileNameList &getFileNamesList();
    using ContextList = CList<pvContextStruct *, pvContextStruct *>;
    /// Returns the open contexts in the order of their creation. Entries may be null.
    static ContextList &getPvContextStructList();
    /// Capabilities of the provider. Store a non-zero argument and return the stored value. A stored value is
    /// never cleared.
    static int isSetSCC_CAP_REENTRANT(int value);
    static int isSetSCC_CAP_COMMENTCHECKOUT(int value);
    /// Creates a context with `new` and appends it to the list.
    static pvContextStruct *addPvStruct();
    /// Returns the first context with this name, ignoring case; null if there is none or the name is empty.
    static pvContextStruct *findPvStructByContextName(const CString &name);
    /// Takes the same context off the list and returns 1; 0 if there is none. It stays open at the provider, and
    /// pointers to it stay valid.
    static int removePvStructByContextName(const CString &name);

    // Create the log lines around provider calls in the last argument. If the file or array is null, leave it
    // unchanged.

    static void getPreSCCCallLogMsg(const CString &name, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, const char *file, CString &out);
    static void getPreSCCCallLogMsg(const CString &name, long count, const char *const *files, CString &out);
    static void getPostSCCCallLogMsg(const CString &name, CString &out);
    static void getSCCReturnLogMsg(const CString &name, long code, CString &out);

    /// The name of the provider in use, set by the code that connects.
    static CString SCCToolName;

  private:
    static int useSCCtool;             // the last decision about the route
    static int hasCheckedSccTool;      // 1 after the registry look-up for theProject
    static int DLLokay;                // 1 if that look-up found a usable provider
    static const char *SCCProviderDLL; // its path, never freed: callers may hold it
    static IProject *theProject;       // only compared, never dereferenced
    static int showCMStatus;
    static CString customButtonCmdVal; // reserved for the custom button
    static CString customButtonImgVal;
};
