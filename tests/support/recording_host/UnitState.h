// Holds what a test can set on a unit of the recording host, as plain fields.
#pragma once

#include "tests/support/recording_host/ObjectState.h"

#include <optional>
#include <utility>

namespace recording {

struct UnitState : ObjectState {
    CString fileName;     ///< without directory, with extension
    CString directory;    ///< the directory of the file
    CString oldFileName;  ///< before the last rename
    CString fullFileName; ///< if not empty, returned instead of directory and file name
    CString extension;    ///< with its dot
    CString reposName;    ///< if not empty, the name in the repository files
    bool stub = false;
    bool reference = false;
    bool external = false;
    CString persistAs; ///< the directory setting
    bool readOnly = false;
    long cmState = 0;
    CString header;
    bool headerReadable = true; ///< the result of updateCMHeader
    CString headerInFile;       ///< the header that updateCMHeader reads, if not empty
    int saveResult = 1;         ///< the result of both ways of saving
    bool renameApproved = true; ///< the result of approveCMRename
    int partFileNamesKept = 0;  ///< the result of keepsPartFileName
    CString partsDirectory;     ///< the result of getPartsDirectory; if empty, the unit's directory
    std::optional<std::pair<CString, CString>> sccArchive; ///< the unit's own provider archive
    std::optional<CString> batchArchive;                   ///< the unit's own archive on the command route
    std::function<void(UnitState &)> onUpdateHeader;       ///< called by updateCMHeader after it was recorded
    /// Called by updateMode after it was recorded, for example to change the read-only state.
    std::function<void(UnitState &, const CString &mode)> onUpdateMode;

  protected:
    [[nodiscard]] CString fullName() const;
    [[nodiscard]] CString nameNoExtension() const;
    [[nodiscard]] CString nameForRepos() const;
    bool readHeader();
    void noteMode(const CString &mode);
    void noteState(long state);
    int findSccArchive(CString &projName, CString &auxPath) const;
    int findBatchArchive(CString &archive) const;
    void note(const CString &what, const CString &value) const;
    int noteSave(const CString &path, ORYSaveLoadOption option);
};

/// Adds the fields of a unit to a kind of unit.
template <class BASE> class UnitOf : public ObjectOf<BASE, UnitState> {
  public:
    [[nodiscard]] CString getFileName() const override { return this->fileName; }
    [[nodiscard]] CString getFullFileName() const override { return this->fullName(); }
    [[nodiscard]] CString getOldFileName() const override { return this->oldFileName; }
    [[nodiscard]] CString getFileNameNoExt() const override { return this->nameNoExtension(); }
    [[nodiscard]] CString getOwnDirectory() const override { return this->directory; }
    [[nodiscard]] const char *getFileExtension() const override { return this->extension.c_str(); }
    [[nodiscard]] CString getNameForReposFiles() const override { return this->nameForRepos(); }
    [[nodiscard]] bool isStub() const override { return this->stub; }
    [[nodiscard]] bool isReference() const override { return this->reference; }
    [[nodiscard]] bool isExternalUnitRecursive() const override { return this->external; }
    [[nodiscard]] CString getPersistAs() const override { return this->persistAs; }
    [[nodiscard]] bool isReadOnly() const override { return this->readOnly; }
    [[nodiscard]] long getCMState() const override { return this->cmState; }
    void setCMState(long state) override { this->noteState(state); }
    [[nodiscard]] CString getCMHeader() const override { return this->header; }
    bool updateCMHeader() override { return this->readHeader(); }
    void updateMode(const CString &mode) override { this->noteMode(mode); }
    int getSccArchiveRecursive(CString &projName, CString &auxPath) const override {
        return this->findSccArchive(projName, auxPath);
    }
    void setSccArchive(const CString &projName, const CString &auxPath) override {
        this->note("set scc archive", projName + "," + auxPath);
        this->sccArchive.reset(); // two empty texts mean none
        if (!projName.IsEmpty() || !auxPath.IsEmpty()) {
            this->sccArchive = {projName, auxPath};
        }
    }
    int getBatchArchiveRecursive(CString &archive) const override { return this->findBatchArchive(archive); }
    void setBatchArchive(const CString &archive) override {
        this->note("set batch archive", archive);
        this->batchArchive = archive;
    }
    void setFileName(const CString &newName) override {
        this->note("set file name", newName);
        this->oldFileName = this->fileName;
        this->fileName = newName;
    }
    void setMYpersAs(const CString &path) override {
        this->note("set directory setting", path);
        this->persistAs = path;
    }
    bool approveCMRename(const CString &newName) override {
        this->note("approve rename", newName);
        return this->renameApproved;
    }
    int keepsPartFileName(const CString &partName) const override {
        this->note("ask whether a part's file keeps its name", partName);
        return this->partFileNamesKept;
    }
    CString getPartsDirectory() const override {
        return this->partsDirectory.IsEmpty() ? this->directory : this->partsDirectory;
    }
    int saveUnitToFile(const CString &path, ORYSaveLoadOption option) override {
        return this->noteSave(path, option);
    }
    int orySave2File(ORYSaveLoadOption option) override { return this->noteSave(this->fullName(), option); }
    void tsvDelete(bool withFile) override { this->note("delete from team server", withFile ? "1" : "0"); }
};

} // namespace recording
