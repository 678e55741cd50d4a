// Holds the properties of the recording host and records every look-up.
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

/// The data of a property.
struct IProperty::Data {
    CString name;
    CString type;
    CString value;
    IFile *file = nullptr;
    IObject *holder = nullptr; ///< its observers are notified of a change; null without a holder
};

namespace recording {

/// The three names of a property, compared byte by byte.
struct PropertyName {
    CString subject;
    CString metaclass;
    CString key;
    friend auto operator<=>(const PropertyName &, const PropertyName &) = default;
};

using PropertyMap = std::map<PropertyName, std::unique_ptr<IProperty>>;

/// A look-up, with the arguments after the key as passed.
struct Lookup {
    const IDObject *object = nullptr;
    PropertyName property;
    int where = 0;
    std::vector<int> rest;
    bool own = false;   ///< by findOwnProperty
    bool found = false; ///< whether it returned a property
};

/// Puts a property into a map, or replaces its value.
IProperty &putProperty(PropertyMap &map, const PropertyName &name, const CString &value, IObject *holder);

} // namespace recording
