// Implements the expansion language of CMProperty.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/Conditional.h"
#include "CM/CMSupport/core/Expansion.h"

int CMProperty::Expand(const CString &source, CMArgumentList &args, CString &result, CString &, bool useToolName) {
    return Expansion(args).expand(source, "a template", result, useToolName);
}

int CMProperty::ExpandProperty(const CString &key, CMArgumentList &args, CString &result, CString &,
                               bool useToolName) {
    return Expansion(args).expandProperty(key, result, useToolName);
}

int CMProperty::ExtractCondition(const CString &source, int &start, int &end, CString &ifPart, CString &thenPart,
                                 CString &elsePart, CString &) {
    // An out-argument may be the source itself.
    const CString searched = source; // NOLINT(performance-unnecessary-copy-initialization)
    const auto found = findConditional(searched);
    start = found ? static_cast<int>(found->start) : -1;
    end = found ? static_cast<int>(found->end) : -1;
    ifPart = found ? found->ifPart : "";
    thenPart = found ? found->thenPart : "";
    elsePart = found ? found->elsePart : "";
    return found ? 1 : 0;
}
