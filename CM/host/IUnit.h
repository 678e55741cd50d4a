// Represents a model element that has its own file.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IDObject.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class IObjectList;

/// How a unit is saved.
enum ORYSaveLoadOption {
    orySaveDefault = 0, ///< only if it is modified
    orySaveAlways = 1,  ///< even if it is not modified
};

class ORC_HOST_API IUnit : public IDObject {
  public:
    // Names of the unit's file.
    [[nodiscard]] virtual CString getFileName() const = 0;      ///< without directory
    [[nodiscard]] virtual CString getFullFileName() const = 0;  ///< with its full directory
    [[nodiscard]] virtual CString getOldFileName() const = 0;   ///< before the last rename; empty without one
    [[nodiscard]] virtual CString getFileNameNoExt() const = 0; ///< without directory and extension
    /// The directory of the unit's file. For a project: its directory for units.
    [[nodiscard]] virtual CString getOwnDirectory() const = 0;
    /// The extension with its dot. The text is valid as long as the unit.
    [[nodiscard]] virtual const char *getFileExtension() const = 0;
    /// The name in the list of repository files: the key with which getByFile finds the unit.
    [[nodiscard]] virtual CString getNameForReposFiles() const = 0;

    /// The unit with this file name, or null.
    [[nodiscard]] static IUnit *getByFile(const CString &path);
    /// All files of the model. The host owns the list, which is valid until the model changes.
    [[nodiscard]] static IObjectList *getRepositoryFiles();
    /// Whether names of repository files are full paths.
    [[nodiscard]] static bool isFullPathRepFiles();

    // Kinds of unit.
    [[nodiscard]] virtual bool isStub() const = 0;      ///< known, but not loaded
    [[nodiscard]] virtual bool isReference() const = 0; ///< used from elsewhere, not to be changed here
    /// Whether the unit or one of its owners is kept outside the project's directory.
    [[nodiscard]] virtual bool isExternalUnitRecursive() const = 0;
    /// The unit's directory setting; non-empty for a subsystem that has its own directory.
    [[nodiscard]] virtual CString getPersistAs() const = 0;
    /// The read-only state in the model.
    [[nodiscard]] virtual bool isReadOnly() const = 0;

    // State under configuration management: the library sets it, the host stores it.
    [[nodiscard]] virtual long getCMState() const = 0;
    virtual void setCMState(long state) = 0;
    [[nodiscard]] virtual CString getCMHeader() const = 0; ///< the stored header text, or an empty text
    /// Re-reads the header from the file; true if the file could be read.
    virtual bool updateCMHeader() = 0;
    /// Updates the unit's read-only state from the file. `mode` is the mode text of the command.
    virtual void updateMode(const CString &mode) = 0;

    // The archive setting of the unit. The getters also search its owners; if they find a setting, they assign it
    // and return non-zero.
    virtual int getSccArchiveRecursive(CString &projName, CString &auxPath) const = 0;
    virtual void setSccArchive(const CString &projName, const CString &auxPath) = 0;
    virtual int getBatchArchiveRecursive(CString &archive) const = 0;
    virtual void setBatchArchive(const CString &archive) = 0;

    // Renaming on the host's side.
    virtual void setFileName(const CString &name) = 0;
    virtual void setMYpersAs(const CString &path) = 0;
    /// Whether the unit may have the file name, given with or without extension, after a rename in the archive.
    [[nodiscard]] virtual bool approveCMRename(const CString &name) = 0;

    // Functions of a unit as the owner of other units.
    /// Non-zero if the file of a unit directly in this one has to keep its name, for example because this unit's
    /// own file, which names it, can't be written. `name` is the new file name; empty means any name.
    [[nodiscard]] virtual int keepsPartFileName(const CString &name) const = 0;
    /// The directory for the files of this unit's parts; a move passes it to the CM tool. A part with a directory
    /// setting has its file in the subdirectory with that name.
    [[nodiscard]] virtual CString getPartsDirectory() const = 0;

    /// Save to a given file, or to the unit's own. Return 1 on success; on failure 0, and the old file remains.
    virtual int saveUnitToFile(const CString &path, ORYSaveLoadOption option) = 0;
    virtual int orySave2File(ORYSaveLoadOption option) = 0;
    /// Deletes through the external team server.
    virtual void tsvDelete(bool withFile) = 0;
};
