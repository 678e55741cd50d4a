// Declares the kinds of unit that the library distinguishes.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IUnit.h"

class IAggregatesIterator;
class ICodeGenConfigInfo;
class IComponent;
class IFileFragmentIterator;
class IFileList;

class ORC_HOST_API IProject : public IUnit {
  public:
    /// The active component, or null. The second function doesn't load it.
    [[nodiscard]] virtual IComponent *getComponent() const = 0;
    [[nodiscard]] virtual IComponent *doGetComponent() const = 0;
    /// The active configuration, or null: the object on which properties are looked up by default.
    [[nodiscard]] virtual ICodeGenConfigInfo *getConfiguration() const = 0;
    /// The directory of the project file, "$orpdirectory".
    [[nodiscard]] virtual CString getProjectFileDirectory() const = 0;
    /// Whether the status of units is shown.
    [[nodiscard]] virtual bool showCMStatus(bool usingTSV) const = 0;

    /// Whether projects work with the external team server.
    [[nodiscard]] static bool isUsingTSV();
    /// The display name of the unit type with this extension (dot included), or an empty text.
    [[nodiscard]] static CString fileExtension2UnitType(const CString &extension);
    /// Extensions, dot included: the new and the old format, and that of a project's unit directory.
    [[nodiscard]] static CString staticGetNewFileExtension();
    [[nodiscard]] static CString staticGetOldFileExtension();
    [[nodiscard]] static CString staticGetFolderExtension();
};

class ORC_HOST_API IWorkspace : public IUnit {
  public:
    /// Records a reloaded unit, which is later applied to other open projects.
    virtual void AddToSavedUnitsList(IUnit *unit) = 0;
};

class ORC_HOST_API ISubsystem : public IUnit {
  public:
    /// Whether CM dialogs and the status refresh skip this subsystem.
    [[nodiscard]] virtual bool isHiddenFromCM() const = 0;
};

/// Declares the file extensions of subsystems.
class ORC_HOST_API IFolder {
  public:
    [[nodiscard]] static CString staticGetNewFileExtension();
    [[nodiscard]] static CString staticGetOldFileExtension();
};

class ORC_HOST_API IClass : public IUnit, public IClassifier {
  public:
    /// Whether the class is directly in a subsystem.
    [[nodiscard]] virtual bool isTopLevel() const = 0;
};

/// A configuration of a component.
class ORC_HOST_API ICodeGenConfigInfo : public IDObject {
  public:
    /// Whether it keeps code respect information.
    [[nodiscard]] virtual bool isRespectMode() const = 0;
};

class ORC_HOST_API IComponent : public IUnit {
  public:
    /// The active configuration, or null.
    [[nodiscard]] virtual ICodeGenConfigInfo *DoGetActiveConfig() const = 0;

    [[nodiscard]] static CString staticGetNewFileExtension();
    [[nodiscard]] static CString staticGetOldFileExtension();
};

/// A code file of a component.
class ORC_HOST_API IFile : public IUnit {
  public:
    /// Appends the code files that observe `object`.
    static void GetFilesObserveObject(const IDObject *object, IFileList &files);
    /// Sets `iterator` to the fragments of this file; with a non-zero flag also to nested fragments.
    virtual void iteratorFragments(IFileFragmentIterator &iterator, int recursive) const = 0;
    /// The name of the file class.
    [[nodiscard]] static CString usrClassName();

    [[nodiscard]] static CString staticGetNewFileExtension();
    [[nodiscard]] static CString staticGetOldFileExtension();
};

/// A part of a code file, with the model element that it is generated from.
class ORC_HOST_API IFileFragment : public IDObject {
  public:
    [[nodiscard]] virtual IDObject *getElement() const = 0;
};

/// A file of any kind that is kept with the model but not read into it.
class ORC_HOST_API IEmbededFile : public IUnit {
  public:
    /// Whether the file name is that of an embedded file.
    [[nodiscard]] static bool IsEmbededFile(const CString &name);
    [[nodiscard]] virtual bool IsTargetReadOnly() const = 0;
    [[nodiscard]] virtual CString getEmbeddedFileName() const = 0;
};
