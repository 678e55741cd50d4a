#include "CM/CMSupport/core/CMLog.h"

#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"

int CMLog::isNamed(const CString &name) const { return name.CompareNoCase("log") == 0 ? 1 : 0; }

CString CMLog::substitute(const CString &name) {
    if (EncloseCommentsInQuotes()) {
        return text_; // required: for any name
    }
    if (isNamed(name) == 0) {
        return name;
    }
    return text_.FindOneOf(" \n\r") >= 0 ? '\'' + text_ + '\'' : text_;
}

bool CMLog::EncloseCommentsInQuotes() {
    const IProperty *const property = findGeneralProperty(keys::encloseComments);
    return property != nullptr && property->getValue().CompareNoCase("No") == 0;
}
