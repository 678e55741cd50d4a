#include "CM/CMSupport/core/CMMode.h"

#include "CM/host/IPN.h"

int CMMode::isNamed(const CString &name) const { return name.CompareNoCase("mode") == 0 ? 1 : 0; }

CString CMMode::substitute(const CString &name) {
    if (isNamed(name) == 0) {
        return name;
    }
    const IProperty *property = getCMtoolProperty(mode_ == readOnly ? IPN::CMReadOnly : IPN::CMReadWrite);
    return property != nullptr ? property->getValue() : CString();
}
