// IProperty: a value with a name, a type and a change notice. It ends with its holder, as at a reload of a unit.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

#include <memory>

class IFile;

class ORC_HOST_API IProperty {
  public:
    /// Where a look-up may find a property.
    enum IPropertyWhere {
        inherited = 0, ///< wherever it is inherited from
        local = 1,     ///< on the object itself only
    };

    /// A copy that belongs to nobody yet; IDObject::storeProperty attaches it.
    explicit IProperty(const IProperty *other);
    virtual ~IProperty();
    IProperty(const IProperty &) = delete;
    IProperty &operator=(const IProperty &) = delete;

    [[nodiscard]] CString getName() const;
    [[nodiscard]] CString getType() const;
    [[nodiscard]] CString getValue() const;
    /// True for a value that the host reads as true ("True", "Yes", "1", without regard to case).
    [[nodiscard]] bool getBool() const;
    /// Sets the value and notifies the observers of the object that holds the property.
    void setValue(const CString &value);
    void setName(const CString &name); ///< for a copy; a property that belongs to an object keeps its name
    void setType(const CString &type);
    /// The file that the value names, or null.
    [[nodiscard]] IFile *getFile() const;

    /// What the host keeps with a property; the host defines it.
    struct Data;
    explicit IProperty(std::unique_ptr<Data> data);
    [[nodiscard]] Data &data() const { return *data_; }

  private:
    std::unique_ptr<Data> data_;
};
