// Extracts single values from a tool's output for CMProperty.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/ToolPattern.h"
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
                                  CString & /*error*/) {
    std::string_view found;
    if (ToolPattern(key).extract(text, found, wasSet) == 0) {
        return 0;
    }
    result = CString(found); // `found` may be part of the text that it replaces
    return 1;
}
