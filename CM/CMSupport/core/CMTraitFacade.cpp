// Implements the members of CMTraitFacade that read properties and headers. The others need the provider and are
// in the dispatch folder.
#include "CM/CMSupport/core/CMTraitFacade.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/host/IPN.h"
#include "CM/host/IUnit.h"
#include "CM/platform/Files.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace {

/// Returns what the pattern of a property finds in the unit's header.
CString fromHeader(const IUnit &unit, const CString &property, std::string_view label) {
    const CString header = unit.getCMHeader();
    if (header.IsEmpty()) {
        return {};
    }
    CString found;
    CString error;
    int wasSet = 0;
    if (CMProperty::ExtractByProperty(property, header, found, wasSet, error) != 1) {
        debugTrace({error, "\n"});
        return {};
    }
    debugTrace({label, ": '", found, "'\n"});
    return found;
}

} // namespace

CString CMTraitFacade::getTheDefaultHeader() { return getDefaultHeader(); }

CString CMTraitFacade::getDefaultHeader() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMHeaderFile, nullptr, IProperty::inherited, false);
    if (property == nullptr) {
        return {};
    }
    CString name;
    CString error;
    CMProperty::ExpandPredefined(property->getValue(), name,
                                 error); // without a root, the other variables are still replaced
    constexpr std::size_t largest = std::size_t{64} * 1024 * 1024; // bytes; no unit file is larger
    const auto text = name.IsEmpty() ? std::nullopt : platform::readFile(name, largest);
    if (!text) {
        return {};
    }
    // Required: a byte 255 counts as the end of the file.
    return CString(text->substr(0, text->find('\xff')));
}

CString CMTraitFacade::getLocker(const IUnit *unit) { return fromHeader(*unit, IPN::CMHeaderItsLocker, "Locker"); }

CString CMTraitFacade::getVersion(const IUnit *unit) {
    return fromHeader(*unit, IPN::CMHeaderItsVersion, "version"); // required: in lower case
}
