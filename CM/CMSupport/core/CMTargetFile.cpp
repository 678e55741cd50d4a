#include "CM/CMSupport/core/CMTargetFile.h"

int CMTargetFile::isNamed(const CString &name) const { return name.CompareNoCase("targetDir") == 0 ? 1 : 0; }

CString CMTargetFile::substitute(const CString &name) { return isNamed(name) != 0 ? directory_ : name; }
