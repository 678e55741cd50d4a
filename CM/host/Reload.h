// Reads a changed file back into the model. A reload may return a new object, which the caller must use from then
// on.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

#include <memory>

/// A reload scope: units are reloaded in place.
class ORC_HOST_API QuickATMFacade {
  public:
    using Callback = void (*)(void *);
    /// Calls the callbacks, which may be null, at the start and at the end of the scope.
    QuickATMFacade(Callback before, void *beforeArgument, Callback after, void *afterArgument);
    ~QuickATMFacade();
    QuickATMFacade(const QuickATMFacade &) = delete;
    QuickATMFacade &operator=(const QuickATMFacade &) = delete;

    /// Whether the unit can be reloaded in place. `flag` is 0 if the file changed in place, 1 if it comes from
    /// the archive.
    [[nodiscard]] static bool CanReloadUnit(const IUnit *unit, int flag);
    /// Reloads from the unit's file. Returns the unit as reloaded, possibly the same object. If the file could not
    /// be read, returns null and leaves the model unchanged.
    IUnit *reloadUnit(IUnit *unit, int flag, int = 0);

  private:
    Callback after_;
    void *afterArgument_;
};

class ORC_HOST_API ATMbaseCallBack {
  public:
    virtual ~ATMbaseCallBack() = default;
};

/// A loader for files in a directory.
class ORC_HOST_API ATMFacade : public ATMbaseCallBack {
  public:
    explicit ATMFacade(const CString &directory);
    ~ATMFacade() override;
    ATMFacade(const ATMFacade &) = delete;
    ATMFacade &operator=(const ATMFacade &) = delete;

    /// Loads a file of the directory (or a full path) as a new unit, which replaces a unit that has this file
    /// already. Returns the unit, or null.
    IUnit *addToModel(const CString &fileName, int flag, int = 0, int = 0, bool = false, void * = nullptr);

  private:
    CString directory_;
};

/// Lists files for recursive commands. Appends the results, with the names of the repository files.
class ORC_HOST_API ATMRecursiveHelper {
  public:
    /// For a unit file: the files of the units that it lists, and with a non-zero flag also those of its
    /// information units (the code files generated from it). For a directory: the files in it, with a non-zero
    /// flag also those in the directories below.
    static void getListOFFilesIn(const CString &path, CStringList &files, int flag);
    /// The unit's own file, then with `recursive` those of the units below it, then with `information` those of
    /// their information units; each once.
    static void getListOFFilesIn(const IUnit *unit, CStringList &files, int recursive, int information);
    /// The information units, or files, of a unit: the code files generated from it or from its contents. The
    /// second form takes the name of the unit's file.
    static void getListOFInformationUnits(const IUnit *unit, CList<IUnit *, IUnit *> &units);
    static void getListOFInformationFiles(const CString &fileName, CStringList &files);
};

/// Compares a unit's file before and after a tool has worked on it.
class ORC_HOST_API CCMFileCompare {
  public:
    explicit CCMFileCompare(const CString &path);
    ~CCMFileCompare();
    CCMFileCompare(const CCMFileCompare &) = delete;
    CCMFileCompare &operator=(const CCMFileCompare &) = delete;

    void LoadFile1(); ///< records the contents of the file before the tool
    void LoadFile2(); ///< and after it
    /// Non-zero if both records have the same model content, so that atm() is sufficient.
    [[nodiscard]] int Compare();
    /// Updates the unit's header and read-only state from the file; the unit object remains.
    void atm(IUnit *unit);

  private:
    struct Pictures;
    std::unique_ptr<Pictures> pictures_;
};
