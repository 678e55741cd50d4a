// Joins one of the host's interfaces with the reference host's data for an element: each function of the interface
// is one call to Element or UnitElement.
#pragma once

#include "orchard/model/UnitElement.h"

namespace orchard {

template <class INTERFACE, class STATE> class ElementObject : public INTERFACE, public STATE {
  public:
    explicit ElementObject(Kind kind) : STATE(kind) {}

    [[nodiscard]] IDObject &object() override { return *this; }

    void doNotify() override { this->changed(); }

    [[nodiscard]] CString getMyStrForLog() const override { return getMetaClassDisplayName() + " " + getName(); }
    [[nodiscard]] CString getName() const override { return this->name(); }
    [[nodiscard]] CString getMetaClassDisplayName() const override { return traitsOf(this->kind()).displayName; }
    [[nodiscard]] OrId getOrId() const override { return OrId(this->id().text()); }

    [[nodiscard]] bool isSaveUnit() const override {
        const UnitElement *const unit = this->asUnit();
        return unit != nullptr && unit->isSaveUnit();
    }
    [[nodiscard]] IUnit *getSaveUnit() const override {
        UnitElement *const unit = this->saveUnit();
        return unit == nullptr ? nullptr : &unit->unit();
    }
    [[nodiscard]] IDObject *getOwner() const override {
        return this->owner() == nullptr ? nullptr : &this->owner()->object();
    }
    [[nodiscard]] bool isOwnedByMe(const IDObject *other) const override {
        const Element *const element = Element::of(other);
        return element != nullptr && this->owns(*element);
    }
    [[nodiscard]] IHandle *getHandle() override { return this->makeHandle(); }

    [[nodiscard]] bool isModified() const override { return this->modified(); }
    void setModified(int modified, bool notify) override {
        if (notify && modified != 0) {
            this->changed();
        } else {
            STATE::setModified(modified != 0);
        }
    }
    // Projects are opened for work here, never for a merge of models.
    [[nodiscard]] bool isLoadFromMMMode() const override { return false; }

    [[nodiscard]] IProperty *findProperty(const CString &subject, const CString &metaclass, const CString &key,
                                          int where, int, int, int, int, int, int) const override {
        return STATE::findProperty(subject, metaclass, key, where);
    }
    [[nodiscard]] IProperty *findOwnProperty(const CString &subject, const CString &metaclass, const CString &key,
                                             int, int, int, int, int) const override {
        return STATE::findOwnProperty(subject, metaclass, key);
    }
    void storeProperty(const CString &subject, const CString &metaclass, const IProperty *property) override {
        STATE::storeProperty(subject, metaclass, property);
    }
};

template <class INTERFACE> class UnitObject : public ElementObject<INTERFACE, UnitElement> {
  public:
    using ElementObject<INTERFACE, UnitElement>::ElementObject;

    // A unit in another unit's file returns the names of that file.
    [[nodiscard]] CString getFileName() const override { return this->holder().fileName(); }
    [[nodiscard]] CString getFullFileName() const override { return this->fullFileName(); }
    [[nodiscard]] CString getOldFileName() const override { return this->oldFileName(); }
    [[nodiscard]] CString getFileNameNoExt() const override {
        const std::string &name = this->holder().fileName();
        return CString(name.substr(0, name.size() - CString(this->getFileExtension()).str().size()));
    }
    [[nodiscard]] CString getOwnDirectory() const override { return this->ownDirectory(); }
    [[nodiscard]] const char *getFileExtension() const override { return this->holder().fileExtension(); }
    [[nodiscard]] CString getNameForReposFiles() const override { return this->fullFileName(); }

    [[nodiscard]] bool isStub() const override { return this->is(UnitElement::stub); }
    [[nodiscard]] bool isReference() const override { return this->isRecursive(UnitElement::reference); }
    [[nodiscard]] bool isExternalUnitRecursive() const override {
        return this->isRecursive(UnitElement::external);
    }
    [[nodiscard]] CString getPersistAs() const override { return this->directorySetting(); }
    [[nodiscard]] bool isReadOnly() const override { return this->holder().UnitElement::isReadOnly(); }

    [[nodiscard]] long getCMState() const override { return this->cmState(); }
    void setCMState(long state) override { UnitElement::setCMState(state); }
    [[nodiscard]] CString getCMHeader() const override { return this->holder().header(); }
    bool updateCMHeader() override { return this->updateHeader(); }
    // The permission bits determine the state, whatever text the tool uses for it.
    void updateMode(const CString & /*mode*/) override { UnitElement::updateMode(); }

    int getSccArchiveRecursive(CString &projName, CString &auxPath) const override {
        return this->sccArchiveRecursive(projName, auxPath);
    }
    void setSccArchive(const CString &projName, const CString &auxPath) override {
        auto &archive = this->makeArchive();
        archive.hasScc = !projName.IsEmpty() || !auxPath.IsEmpty();
        archive.sccProject = projName.str();
        archive.sccAuxPath = auxPath.str();
        this->changed();
    }
    int getBatchArchiveRecursive(CString &archive) const override { return this->batchArchiveRecursive(archive); }
    void setBatchArchive(const CString &archive) override {
        this->makeArchive().batch = archive.str();
        this->changed();
    }

    void setFileName(const CString &name) override { this->rename(name); }
    void setMYpersAs(const CString &path) override { this->moveTo(path); }
    [[nodiscard]] bool approveCMRename(const CString &name) override { return this->mayHaveName(name); }

    [[nodiscard]] int keepsPartFileName(const CString &name) const override {
        return this->keepsFileNameOfPart(name) ? 1 : 0;
    }
    // The same place here, because a directory setting moves the unit's own file along with the files of its
    // parts.
    [[nodiscard]] CString getPartsDirectory() const override { return this->ownDirectory(); }

    int saveUnitToFile(const CString &path, ORYSaveLoadOption option) override {
        return this->save(path, option == orySaveAlways);
    }
    int orySave2File(ORYSaveLoadOption option) override { return this->saveToOwnFile(option == orySaveAlways); }
    // There is no team server here (see IProject::isUsingTSV).
    void tsvDelete(bool /*withFile*/) override {}

  private:
    /// The unit whose file contains this one: the unit itself if it has a file.
    [[nodiscard]] const UnitElement &holder() const {
        const UnitElement *const unit = this->hasFile() ? nullptr : this->saveUnit();
        return unit == nullptr ? *this : *unit;
    }
};

} // namespace orchard
