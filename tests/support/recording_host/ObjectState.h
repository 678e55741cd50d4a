// Holds what a test can set on any object of the recording host, as plain fields.
#pragma once

#include "CM/host/IDObject.h"
#include "CM/host/IUnit.h"
#include "CM/host/OrId.h"
#include "tests/support/recording_host/PropertyState.h"

#include <functional>
#include <vector>

namespace recording {

struct ObjectState {
    ObjectState() = default;
    ObjectState(const ObjectState &) = delete;
    ObjectState &operator=(const ObjectState &) = delete;
    virtual ~ObjectState() = default;

    CString name;
    CString metaClassName; ///< the display name of its kind
    CString id;            ///< the key in the host's table of objects, which handles use
    bool saveUnit = false; ///< whether the object has a file of its own
    bool modified = false;
    bool loadedForMerge = false;
    bool beingTakenDown = false; ///< a safe handle look-up then returns null
    IDObject *owner = nullptr;
    std::vector<IDObject *> inside; ///< the objects that it owns directly
    PropertyMap properties;         ///< the properties on the object itself
    /// Called at the start of getHandle, which may fault on a dead object; a test may throw or fault here.
    std::function<void()> onGetHandle;
    IDObject *self = nullptr; ///< the object itself

    /// Returns the state of an object, which must belong to this host.
    static ObjectState &of(IDObject *object);
    static const ObjectState &of(const IDObject *object);

  protected:
    [[nodiscard]] IUnit *holdingUnit() const;
    [[nodiscard]] bool owns(const IDObject *other) const;
    [[nodiscard]] IHandle *newHandle() const;
    void noteNotified() const;
    void noteModified(int value, bool notify);
    [[nodiscard]] IProperty *lookUp(const CString &subject, const CString &metaclass, const CString &key,
                                    int where, std::vector<int> rest, bool own) const;
    void store(const CString &subject, const CString &metaclass, const IProperty *property);
};

/// Adds the fields of a state to an abstract class of the model.
template <class BASE, class STATE = ObjectState> class ObjectOf : public BASE, public STATE {
  public:
    ObjectOf() { this->self = this; }

    void doNotify() override { this->noteNotified(); }
    [[nodiscard]] CString getMyStrForLog() const override { return this->metaClassName + " " + this->name; }
    [[nodiscard]] CString getName() const override { return this->name; }
    [[nodiscard]] CString getMetaClassDisplayName() const override { return this->metaClassName; }
    [[nodiscard]] OrId getOrId() const override { return OrId(this->id); }
    [[nodiscard]] bool isSaveUnit() const override { return this->saveUnit; }
    [[nodiscard]] IUnit *getSaveUnit() const override { return this->holdingUnit(); }
    [[nodiscard]] IDObject *getOwner() const override { return this->owner; }
    [[nodiscard]] bool isOwnedByMe(const IDObject *other) const override { return this->owns(other); }
    [[nodiscard]] IHandle *getHandle() override { return this->newHandle(); }
    [[nodiscard]] bool isModified() const override { return this->modified; }
    void setModified(int value, bool notify) override { this->noteModified(value, notify); }
    [[nodiscard]] bool isLoadFromMMMode() const override { return this->loadedForMerge; }

    [[nodiscard]] IProperty *findProperty(const CString &subject, const CString &metaclass, const CString &key,
                                          int where, int a = 1, int b = 0, int c = 0, int d = 1, int e = 0,
                                          int f = 0) const override {
        return this->lookUp(subject, metaclass, key, where, {a, b, c, d, e, f}, false);
    }
    [[nodiscard]] IProperty *findOwnProperty(const CString &subject, const CString &metaclass, const CString &key,
                                             int a = 0, int b = 0, int c = 1, int d = 0,
                                             int e = 0) const override {
        return this->lookUp(subject, metaclass, key, IProperty::local, {a, b, c, d, e}, true);
    }
    void storeProperty(const CString &subject, const CString &metaclass, const IProperty *property) override {
        this->store(subject, metaclass, property);
    }
};

} // namespace recording
