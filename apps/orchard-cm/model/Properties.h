// Presents the CM properties as a user sees them: values, and where each comes from.
#pragma once

#include "CM/host/IDObject.h"
#include "CM/host/IProperty.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orchard_cm {

/// A property that applies to an object.
struct PropertyFacts {
    std::string metaclass; ///< the tool's name, or one of the fixed ones
    std::string key;
    std::string value;
    std::string source; ///< "project station", "Class Drives/Pump", "property set RCS"
    std::string place;  ///< "FILE:LINE:COLUMN" of a property set; else empty
};

/// Returns the object on which properties are looked up if no unit is named: the active configuration, or else the
/// project. Throws a Failure if there is neither.
IDObject &defaultReferee();

/// Returns the property that applies to `object` under `metaclass`. With an empty `metaclass` it searches where
/// the library searches: under the metaclass of the tool in use (its name, or "SCC" if the project works through a
/// provider), then under CMGeneral, then under General.
std::optional<PropertyFacts> findProperty(const IDObject &object, const std::string &key,
                                          const std::string &metaclass);
/// Like findProperty, but throws a Failure with similar keys if there is none.
PropertyFacts requireProperty(const IDObject &object, const std::string &key, const std::string &metaclass);
/// Returns all properties that apply to `object` and whose key contains `text`, sorted by metaclass and key.
std::vector<PropertyFacts> propertiesOf(const IDObject &object, const std::string &text);
/// Sets a property on the object itself.
void setProperty(IDObject &object, const std::string &metaclass, const std::string &key, const std::string &value);

/// Remembers a property of an object, and restores it if a change can't be saved.
class PropertyBefore {
  public:
    PropertyBefore(IDObject &object, std::string metaclass, std::string key);
    /// Runs `change`, which sets and saves the property. If it throws, the property and the modified state of the
    /// object's unit are restored.
    void runOrRestore(const std::function<void()> &change);

  private:
    void restore();

    IDObject &object_;
    std::string metaclass_;
    std::string key_;
    std::unique_ptr<IProperty> own_; ///< null if the object has none of its own
    bool wasModified_;
};

/// Returns the property of the tool in use that the library uses for `key`. Throws a Failure with similar keys if
/// there is none.
IProperty &toolProperty(const std::string &key);

} // namespace orchard_cm
