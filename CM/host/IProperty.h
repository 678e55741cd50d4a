// Declares a named, typed value that notifies observers of changes. It is destroyed together with its holder, for
// example in a reload.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

#include <memory>

class IFile;

class ORC_HOST_API IProperty {
  public:
    /// Where a look-up may find a property.
    enum IPropertyWhere {
        inherited = 0, ///< on the object itself, or inherited from anywhere up its owners
        local = 1,     ///< on the object itself only
    };

    /// Makes a copy without a holder, for null one without name, type and value; IDObject::storeProperty attaches
    /// it.
    explicit IProperty(const IProperty *other);
    virtual ~IProperty();
    IProperty(const IProperty &) = delete;
    IProperty &operator=(const IProperty &) = delete;

    [[nodiscard]] CString getName() const;
    [[nodiscard]] CString getType() const;
    [[nodiscard]] CString getValue() const;
    /// True for a value that the host reads as true ("True", "Yes", "1", without regard to case).
    [[nodiscard]] bool getBool() const;
    /// Sets the value and notifies the holder's observers, unless the value is unchanged.
    void setValue(const CString &value);
    void setName(const CString &name); ///< only for copies without a holder
    void setType(const CString &type);
    /// The file that the value names, or null.
    [[nodiscard]] IFile *getFile() const;

    /// The host's data of a property; the host defines it.
    struct Data;
    explicit IProperty(std::unique_ptr<Data> data);
    [[nodiscard]] Data &data() const { return *data_; }

  private:
    std::unique_ptr<Data> data_;
};
