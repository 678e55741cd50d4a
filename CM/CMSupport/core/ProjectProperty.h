// Looks up properties on the active project, independent of the tool in use.
#pragma once

#include "CM/host/IProperty.h"
#include "CM/platform/CString.h"

/// Returns the project's property under the metaclass, its own or inherited. Null without a project or a property.
[[nodiscard]] const IProperty *findProjectProperty(const CString &metaclass, const CString &key);
/// Does the same under "General", the metaclass of the properties of all tools.
[[nodiscard]] const IProperty *findGeneralProperty(const CString &key);
/// Returns its value as IProperty::getBool reads it; `otherwise` without the property.
[[nodiscard]] bool isGeneralPropertyTrue(const CString &key, bool otherwise);
/// Returns the property under "SCC", the metaclass of the properties of all providers.
[[nodiscard]] const IProperty *findProviderProperty(const CString &key);
/// Returns its value as IProperty::getBool reads it; false without the property.
[[nodiscard]] bool isProviderPropertyTrue(const CString &key);
