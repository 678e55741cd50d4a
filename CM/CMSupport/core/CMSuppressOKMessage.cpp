#include "CM/CMSupport/core/CMSuppressOKMessage.h"

int CMSuppressOKMessage::isNamed(const CString &name) const {
    return name.CompareNoCase("shouldSuppressSCCOKMessage") == 0 ? 1 : 0;
}

CString CMSuppressOKMessage::substitute(const CString &name) { return isNamed(name) != 0 ? flag_ : name; }
