// Properties of configuration management as a user sees them: values, and where each comes from.
#pragma once

#include "CM/host/IDObject.h"
#include "CM/host/IProperty.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orchard_cm {

/// A property that holds for an object.
struct PropertyFacts {
    std::string metaclass; ///< the tool's name, or one of the fixed ones
    std::string key;
    std::string value;
    std::string source; ///< "project station", "Class Drives/Pump", "property set RCS"
    std::string place;  ///< "FILE:LINE:COLUMN" of a property set; else empty
};

/// The object on which properties are looked up if no unit is named: the active configuration, else the project.
/// Throws a Failure without one.
IDObject &defaultReferee();

/// The property that holds for `object` under `metaclass`; with an empty one under the name of the tool in use,
/// else under the one for all tools, else under the general one: where the library looks for it.
std::optional<PropertyFacts> findProperty(const IDObject &object, const std::string &key,
                                          const std::string &metaclass);
/// The same, but throws a Failure with similar keys where there is none.
PropertyFacts requireProperty(const IDObject &object, const std::string &key, const std::string &metaclass);
/// All that hold for `object` and whose key holds `text`, sorted by metaclass and key.
std::vector<PropertyFacts> propertiesOf(const IDObject &object, const std::string &text);
/// Sets a property on the object itself.
void setProperty(IDObject &object, const std::string &metaclass, const std::string &key, const std::string &value);

/// A property of an object as it was, and the way back to it for a change that can't be saved.
class PropertyBefore {
  public:
    PropertyBefore(IDObject &object, std::string metaclass, std::string key);
    /// Runs `change`, which sets and saves the property; where it throws, the property and the modified state of
    /// the object's unit are again what they were.
    void keepUnless(const std::function<void()> &change);

  private:
    void restore();

    IDObject &object_;
    std::string metaclass_;
    std::string key_;
    std::unique_ptr<IProperty> own_; ///< null if the object has none of its own
    bool wasModified_;
};

/// The property of the tool in use that the library would take for `key`. Throws a Failure with similar keys where
/// there is none.
IProperty &toolProperty(const std::string &key);

} // namespace orchard_cm
