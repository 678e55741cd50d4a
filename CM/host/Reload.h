// Reading a changed file back into the model. A reload may give another object than before, and the caller goes
// on with that one.
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
    /// The callbacks, which may be null, are called at the start and at the end of the scope.
    QuickATMFacade(Callback before, void *beforeArgument, Callback after, void *afterArgument);
    ~QuickATMFacade();
    QuickATMFacade(const QuickATMFacade &) = delete;
    QuickATMFacade &operator=(const QuickATMFacade &) = delete;

    /// Whether the unit can be reloaded in place. `flag` is 0 if the file changed in place, 1 if it comes from
    /// the archive.
    [[nodiscard]] static bool CanReloadUnit(const IUnit *unit, int flag);
    /// Reloads from the unit's file. The new unit, or null if the file could not be read: then the model holds
    /// what it held.
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

    /// Loads a file of the directory (a full path is taken as it is) as a new unit, in the place of one that has
    /// this file already. The unit, or null.
    IUnit *addToModel(const CString &fileName, int flag, int = 0, int = 0, bool = false, void * = nullptr);

  private:
    CString directory_;
};

/// Lists of files for recursive commands. Results are appended; names are those of the repository files.
class ORC_HOST_API ATMRecursiveHelper {
  public:
    /// Of a unit file: the files of the units that it names, with a non-zero flag those of its information units,
    /// too. Of a directory: the files in it, with a non-zero flag in the directories below, too.
    static void getListOFFilesIn(const CString &path, CStringList &files, int flag);
    /// The unit's own file, then with `recursive` those of the units below it, then with `information` those of
    /// their information units; each once.
    static void getListOFFilesIn(const IUnit *unit, CStringList &files, int recursive, int information);
    /// The information units, or files, that go with a unit: the code files that stand for it or for what is in
    /// it. The second form takes the name of the unit's file.
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

    void LoadFile1(); ///< takes the picture of the file as it stands before
    void LoadFile2(); ///< and after
    /// Non-zero if both pictures hold the same model content, so that atm() is enough.
    [[nodiscard]] int Compare();
    /// Brings the unit's header and read-only state into line with the file; the unit object stays.
    void atm(IUnit *unit);

  private:
    struct Pictures;
    std::unique_ptr<Pictures> pictures_;
};
