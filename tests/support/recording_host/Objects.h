// Defines the kinds of object of the recording host. Each implements a class of the host's interface with fields.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/Iterators.h"
#include "tests/support/recording_host/UnitState.h"

namespace recording {

/// An element without its own file.
class Element : public ObjectOf<IDObject> {};

class Project : public UnitOf<IProject> {
  public:
    IComponent *component = nullptr;
    ICodeGenConfigInfo *configuration = nullptr;
    CString projectFileDirectory;
    bool showStatus = false;

    [[nodiscard]] IComponent *getComponent() const override { return component; }
    [[nodiscard]] IComponent *doGetComponent() const override { return component; }
    [[nodiscard]] ICodeGenConfigInfo *getConfiguration() const override { return configuration; }
    [[nodiscard]] CString getProjectFileDirectory() const override { return projectFileDirectory; }
    /// Records the last argument in `askedUsingTSV`.
    [[nodiscard]] bool showCMStatus(bool usingTSV) const override {
        askedUsingTSV = usingTSV;
        return showStatus;
    }
    mutable bool askedUsingTSV = false;
};

class Workspace : public UnitOf<IWorkspace> {
  public:
    std::vector<IUnit *> savedUnits;
    void AddToSavedUnitsList(IUnit *unit) override;
};

class Subsystem : public UnitOf<ISubsystem> {
  public:
    bool hiddenFromCM = false;
    [[nodiscard]] bool isHiddenFromCM() const override { return hiddenFromCM; }
};

class Class : public UnitOf<IClass> {
  public:
    bool topLevel = true;
    [[nodiscard]] bool isTopLevel() const override { return topLevel; }
};

class Configuration : public ObjectOf<ICodeGenConfigInfo> {
  public:
    bool respectMode = false;
    [[nodiscard]] bool isRespectMode() const override { return respectMode; }
};

class Component : public UnitOf<IComponent> {
  public:
    ICodeGenConfigInfo *activeConfig = nullptr;
    [[nodiscard]] ICodeGenConfigInfo *DoGetActiveConfig() const override { return activeConfig; }
};

class Fragment : public ObjectOf<IFileFragment> {
  public:
    IDObject *element = nullptr;
    [[nodiscard]] IDObject *getElement() const override { return element; }
};

class File : public UnitOf<IFile> {
  public:
    std::vector<IDObject *> observed; ///< the elements that the file shows
    void iteratorFragments(IFileFragmentIterator &iterator, int recursive) const override;
};

class EmbeddedFile : public UnitOf<IEmbededFile> {
  public:
    bool targetReadOnly = false;
    [[nodiscard]] bool IsTargetReadOnly() const override { return targetReadOnly; }
    [[nodiscard]] CString getEmbeddedFileName() const override { return fileName; }
};

} // namespace recording
