#include "CM/CMSupport/core/DebugTrace.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/host/Utilities.h"

#include <iostream>

bool isDebugTraceOn() {
    static const CString section("General");
    static const CString key("DEBUG_CM");
    CString value;
    return oqGetEnvVar(section, key, value, nullptr) == 1 && value == "TRUE";
}

void debugTrace(std::initializer_list<std::string_view> parts) {
    if (!isDebugTraceOn()) {
        return;
    }
    std::ostream *window = getMainCMOutputer()();
    std::ostream &stream = window != nullptr ? *window : std::cout;
    stream << "+++ ";
    for (const auto part : parts) {
        stream << part;
    }
    stream << std::flush;
}
