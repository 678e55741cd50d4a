// The properties of the recording host, and the record of every look-up.
#pragma once

#include "CM/host/IProperty.h"
#include "CM/platform/CString.h"

#include <compare>
#include <map>
#include <memory>
#include <vector>

class IDObject;
class IFile;
class IObject;

/// What this host keeps with a property.
struct IProperty::Data {
    CString name;
    CString type;
    CString value;
    IFile *file = nullptr;
    IObject *holder = nullptr; ///< whose observers hear of a change; null while it belongs to nobody
};

namespace recording {

/// The three names of a property. They compare byte by byte.
struct PropertyName {
    CString subject;
    CString metaclass;
    CString key;
    friend auto operator<=>(const PropertyName &, const PropertyName &) = default;
};

using PropertyMap = std::map<PropertyName, std::unique_ptr<IProperty>>;

/// One look-up, with the arguments behind the key as they came.
struct Lookup {
    const IDObject *object = nullptr;
    PropertyName property;
    int where = 0;
    std::vector<int> rest;
    bool own = false;   ///< asked by findOwnProperty
    bool found = false; ///< whether it gave a property
};

/// Puts a property into a map, replacing the value of one that is there.
IProperty &putProperty(PropertyMap &map, const PropertyName &name, const CString &value, IObject *holder);

} // namespace recording
