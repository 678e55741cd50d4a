// Gives a program access to model objects beyond the host's interface.
#pragma once

#include "orchard/OrchardApi.h"

#include <string>
#include <string_view>
#include <vector>

class IDObject;
class IProject;
class IUnit;

namespace orchard {

class PropertySet;
class PropertyTable;

/// The names from below the project down to the object, joined with "/"; the project's own name for the project.
[[nodiscard]] ORCHARD_API std::string pathInModel(const IDObject &object);
/// The project that contains the object, or null.
[[nodiscard]] ORCHARD_API IProject *projectOf(const IDObject &object);
/// The type of an attribute or the signature of an operation; empty for other objects.
[[nodiscard]] ORCHARD_API std::string typeOf(const IDObject &object);
[[nodiscard]] ORCHARD_API std::string descriptionOf(const IDObject &object);
/// The elements directly inside an object, in their order.
[[nodiscard]] ORCHARD_API std::vector<IDObject *> elementsInside(const IDObject &object);

/// These change the object and mark its unit as modified; setting the same text changes nothing.
ORCHARD_API void setName(IDObject &object, std::string_view name);
ORCHARD_API void setDescription(IDObject &object, std::string_view description);

/// Removes a property from the object itself; returns false if it has no such property.
ORCHARD_API bool removeProperty(IDObject &object, std::string_view subject, std::string_view metaclass,
                                std::string_view key);

/// A table of properties that apply to an object, and its holder: an object or an installed set.
struct PropertyPlace {
    const PropertyTable &table;
    const IDObject *holder = nullptr;
    const PropertySet *set = nullptr;
};
/// The places from which an object inherits properties, in order of precedence, for listing:
/// IDObject::findProperty returns the property of the first place that has it.
[[nodiscard]] ORCHARD_API std::vector<PropertyPlace> propertyPlacesOf(const IDObject &object);

} // namespace orchard
