// What this host keeps with a property.
#pragma once

#include "CM/host/IProperty.h"

#include <functional>
#include <string>
#include <string_view>

class IObject;

/// Every living one is known, so that a value can be traced back to the property that holds it.
struct IProperty::Data {
    Data() noexcept;
    Data(const Data &other);
    Data &operator=(const Data &) = delete;
    ~Data();

    CString name;
    CString type;
    CString value;
    std::string subject;       ///< empty as long as the property belongs to nobody
    std::string metaclass;     ///< likewise
    IObject *holder = nullptr; ///< told of changes; null for a property of a set or of nobody
    /// Where it was read: "FILE:LINE:COLUMN" of a property set; empty for others.
    std::string source;
    bool isInstalled = false; ///< whether it stands in an installed property set

  private:
    friend struct LivingProperties;
    Data *previous_;
    Data *next_;
};

namespace orchard {

/// The property that holds this very value, in words for a message: its name, its tool or metaclass, and where it
/// was set. The empty text if none does. Looks through all living properties.
std::string ownerOfValue(std::string_view value);

/// Takes over what is set on a property of an installed set, such as by storing it on the project, and
/// returns true; with false, or without a handler, the value is changed for the rest of the process only.
using InstalledChangeHandler = std::function<bool(const std::string &subject, const std::string &metaclass,
                                                  const IProperty &property, const CString &value)>;
void setInstalledChangeHandler(InstalledChangeHandler handler);
const InstalledChangeHandler &installedChangeHandler();

} // namespace orchard
