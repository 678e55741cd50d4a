#include "CM/CMSupport/core/CMLog.h"

#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"

int CMLog::isNamed(const CString &name) const { return name.CompareNoCase("log") == 0 ? 1 : 0; }

CString CMLog::substitute(const CString &name) {
    if (EncloseCommentsInQuotes()) {
        return text_; // for a foreign name too: deliberate
    }
    if (isNamed(name) == 0) {
        return name;
    }
    return text_.FindOneOf(" \n\r") >= 0 ? '\'' + text_ + '\'' : text_;
}

bool CMLog::EncloseCommentsInQuotes() {
    static const CString key("EncloseCommentsInQuotes");
    const IProject *project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return false;
    }
    const IProperty *property = project->findProperty(IPN::CM, IPN::General, key, IProperty::inherited);
    return property != nullptr && property->getValue().CompareNoCase("No") == 0;
}
