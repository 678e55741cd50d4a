// Holds the data of a property in this host.
#pragma once

#include "CM/host/IProperty.h"

#include <functional>
#include <string>

class IObject;

struct IProperty::Data {
    CString name;
    CString type;
    CString value;
    std::string subject;       ///< empty while the property belongs to no table
    std::string metaclass;     ///< likewise
    IObject *holder = nullptr; ///< notified of changes; null for a property of a set or of no table
    /// Where it was read from: "FILE:LINE:COLUMN" in a property set; empty for others.
    std::string source;
    bool isInstalled = false; ///< whether it is in an installed property set
};

namespace orchard {

/// Describes a property for a message: its name, its tool or metaclass, and where it was set.
std::string describe(const IProperty &property);

/// Handles a change to a property of an installed set, for example by storing the value on the project; returns
/// whether it did. Otherwise, or without a handler, the change lasts only until the process ends.
using InstalledChangeHandler = std::function<bool(const std::string &subject, const std::string &metaclass,
                                                  const IProperty &property, const CString &value)>;
void setInstalledChangeHandler(InstalledChangeHandler handler);
const InstalledChangeHandler &installedChangeHandler();

} // namespace orchard
