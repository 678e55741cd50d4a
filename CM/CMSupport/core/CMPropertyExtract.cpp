// CMProperty: single values out of a tool's output.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/SPString.h"

int CMProperty::ExtractBySearchPattern(const CString &pattern, const CString &text, CString &result, CString &) {
    SPStringList matches(20);
    SPString(text).m(pattern, matches, "i");
    if (matches.count() == 0) {
        debugTrace({"Failed to match '", pattern, "' in '", text, "'\n"});
        return 0;
    }
    result = matches[1];
    return 1;
}

int CMProperty::ExtractByProperty(const CString &key, const CString &text, CString &result, int &wasSet,
                                  CString &error) {
    const IProperty *property = getToolProperty(key, nullptr, IProperty::inherited, false);
    if (property == nullptr) {
        return 0;
    }
    const CString pattern = property->getValue();
    if (pattern.IsEmpty()) {
        wasSet = 0;
        debugTrace({"The property '", key, "is empty'\n"}); // the quote stands behind the words: deliberate
        result.Empty();
        return 1;
    }
    wasSet = 1;
    return ExtractBySearchPattern(pattern, text, result, error);
}
