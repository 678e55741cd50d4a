// Supplies the text for a variable of a command template. An argument list is searched front to back; the first
// argument with that name wins.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IProperty.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class ORC_CM_API CMArgument {
  public:
    CMArgument() = default;
    CMArgument(const CMArgument &) = delete;
    CMArgument &operator=(const CMArgument &) = delete;

    /// Returns non-zero if this argument has that name, ignoring case.
    [[nodiscard]] virtual int isNamed(const CString &name) const = 0;
    /// Returns the text for the name; returns any other name unchanged.
    [[nodiscard]] virtual CString substitute(const CString &name) = 0;

    virtual ~CMArgument() = default;
};

/// The arguments of one call, front to back. The list does not own them.
using CMArgumentList = CList<CMArgument *, CMArgument *>;

/// An argument whose value the user or the caller gave.
class ORC_CM_API CMUserBasedArgument : public CMArgument {};

/// An argument whose value comes from a property.
class ORC_CM_API CMPropertyArgument : public CMArgument {
  public:
    /// Returns the tool property with this key, or null.
    [[nodiscard]] virtual IProperty *getArgumentProperty(const CString &key) const;
};

/// An argument that chooses among properties.
class ORC_CM_API CMPropertyDirectedArgument : public CMPropertyArgument {
  public:
    [[nodiscard]] virtual IProperty *getCMtoolProperty(const CString &key);
};
