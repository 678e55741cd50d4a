// Declares the model's objects: IObject, INObject and IDObject, each derived from the one before. The host owns
// all of them.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IProperty.h"
#include "CM/platform/CString.h"

#include <memory>

class IHandle;
class IUnit;
class OrId;

class ORC_HOST_API IObject {
  public:
    IObject() = default;
    virtual ~IObject() = default;
    IObject(const IObject &) = delete;
    IObject &operator=(const IObject &) = delete;

    /// Notifies the observers of this object of a change.
    virtual void doNotify() = 0;
};

class ORC_HOST_API INObject : public IObject {
  public:
    /// The text that names this object in the log.
    [[nodiscard]] virtual CString getMyStrForLog() const = 0;

    /// While an instance exists, changes to the model don't count as changes for code generation. Instances can be
    /// nested.
    class ORC_HOST_API IgnoreCGModification {
      public:
        IgnoreCGModification();
        ~IgnoreCGModification();
        IgnoreCGModification(const IgnoreCGModification &) = delete;
        IgnoreCGModification &operator=(const IgnoreCGModification &) = delete;
    };
};

class ORC_HOST_API IDObject : public INObject {
  public:
    /// The element's name.
    [[nodiscard]] virtual CString getName() const = 0;
    /// The display name of its kind, for messages.
    [[nodiscard]] virtual CString getMetaClassDisplayName() const = 0;
    [[nodiscard]] virtual OrId getOrId() const = 0;

    /// Whether the element has a file of its own.
    [[nodiscard]] virtual bool isSaveUnit() const = 0;
    /// The unit whose file contains the element: the element itself if it is a unit; null if no file does.
    [[nodiscard]] virtual IUnit *getSaveUnit() const = 0;
    [[nodiscard]] virtual IDObject *getOwner() const = 0;
    /// Whether `other` is anywhere below this element.
    [[nodiscard]] virtual bool isOwnedByMe(const IDObject *other) const = 0;
    /// Returns a new handle to this object; release it with IHandle::release(). May fault if the object has been
    /// destroyed.
    [[nodiscard]] virtual IHandle *getHandle() = 0;

    [[nodiscard]] virtual bool isModified() const = 0;
    /// Sets or clears the modified flag; `notify` controls whether observers are notified.
    virtual void setModified(int modified, bool notify) = 0;
    /// Whether the project was opened for a model merge.
    [[nodiscard]] virtual bool isLoadFromMMMode() const = 0;

    /// The property, or null. `where` is an IProperty::IPropertyWhere. Callers leave the further arguments at
    /// their defaults.
    [[nodiscard]] virtual IProperty *findProperty(const CString &subject, const CString &metaclass,
                                                  const CString &key, int where, int = 1, int = 0, int = 0,
                                                  int = 1, int = 0, int = 0) const = 0;
    /// The property if it is set on the object itself, or null. The arguments after the key are fixed.
    [[nodiscard]] virtual IProperty *findOwnProperty(const CString &subject, const CString &metaclass,
                                                     const CString &key, int = 0, int = 0, int = 1, int = 0,
                                                     int = 0) const = 0;
    /// Attaches a copy of the property to the object, replacing one of the same subject, metaclass and name.
    virtual void storeProperty(const CString &subject, const CString &metaclass, const IProperty *property) = 0;
};

/// A classifier, such as a class, that may own code files.
class ORC_HOST_API IClassifier {
  public:
    virtual ~IClassifier() = default;
};
