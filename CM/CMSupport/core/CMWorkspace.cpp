#include "CM/CMSupport/core/CMWorkspace.h"

int CMWorkspace::isNamed(const CString &name) const { return name.CompareNoCase("workspace") == 0 ? 1 : 0; }

CString CMWorkspace::substitute(const CString &name) { return isNamed(name) != 0 ? workspace_ : name; }
