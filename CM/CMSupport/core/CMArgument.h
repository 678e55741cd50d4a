// CMArgument: answers a variable name of a command template with a text. An argument list is asked front to back,
// and the first argument that owns the name wins.
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

    /// Non-zero if this argument answers to the name, in any mix of capitals and small letters.
    [[nodiscard]] virtual int isNamed(const CString &name) const = 0;
    /// The text for the name; a name that is not this argument's comes back unchanged.
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
    /// The tool property with this key, or null.
    [[nodiscard]] virtual IProperty *getArgumentProperty(const CString &key) const;
};

/// An argument that chooses among properties.
class ORC_CM_API CMPropertyDirectedArgument : public CMPropertyArgument {
  public:
    [[nodiscard]] virtual IProperty *getCMtoolProperty(const CString &key);
};
