// What a program can see and change of model objects beyond the host's interface.
#pragma once

#include "orchard/OrchardApi.h"

#include <string>
#include <string_view>
#include <vector>

class IDObject;
class IProject;
class IUnit;

namespace orchard {

class PropertyTable;

/// The names from below the project down to the object, joined with "/"; the project's own name for the project.
[[nodiscard]] ORCHARD_API std::string pathInModel(const IDObject &object);
/// The project that holds the object, or null.
[[nodiscard]] ORCHARD_API IProject *projectOf(const IDObject &object);
/// The type of an attribute or the signature of an operation; empty for what has none.
[[nodiscard]] ORCHARD_API std::string typeOf(const IDObject &object);
[[nodiscard]] ORCHARD_API std::string descriptionOf(const IDObject &object);
/// The elements directly inside an object, in their order.
[[nodiscard]] ORCHARD_API std::vector<IDObject *> elementsInside(const IDObject &object);

/// These change the object and mark its unit as modified; a text that is the same changes nothing.
ORCHARD_API void setName(IDObject &object, std::string_view name);
ORCHARD_API void setDescription(IDObject &object, std::string_view description);

/// Takes a property off the object itself; false if it has none of that address.
ORCHARD_API bool removeProperty(IDObject &object, std::string_view subject, std::string_view metaclass,
                                std::string_view key);

/// The properties set on the object itself, for listing; null if it has none.
[[nodiscard]] ORCHARD_API const PropertyTable *ownPropertiesOf(const IDObject &object);

} // namespace orchard
