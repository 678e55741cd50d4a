#include "CM/CMSupport/core/ToolPattern.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"

ToolPattern::ToolPattern(const CString &key) : key_(key), traces_(isDebugTraceOn()) {
    const IProperty *const property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false);
    exists_ = property != nullptr;
    if (exists_) {
        text_ = property->getValue();
    }
    if (!text_.IsEmpty()) {
        pattern_.emplace(text_, "i");
    }
}

int ToolPattern::extract(std::string_view text, std::string_view &result, int &wasSet) const {
    if (!exists_) {
        return 0;
    }
    wasSet = pattern_ ? 1 : 0;
    if (!pattern_) {
        if (traces_) {
            debugTrace({"The property '", key_, "is empty'\n"}); // required: the quote after the words
        }
        result = {};
        return 1;
    }
    if (pattern_->m(text, result) != 0) {
        return 1;
    }
    if (traces_) {
        debugTrace({"Failed to match '", text_, "' in '", text, "'\n"});
    }
    return 0;
}
