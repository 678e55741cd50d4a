#include "CM/CMSupport/provider/SccQuery.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/ProviderCall.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace {

constexpr auto source = "../CM/CMSupport/SccQuery";
constexpr auto entry = "SccQueryInfo";

/// The name by which the host knows the unit of an item.
CString nameForHost(const CMArchiveItem &item) {
    const CString path = item.getFileNameWithPath();
    if (IUnit::isFullPathRepFiles()) {
        return path;
    }
    CString directory;
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension(path, directory, file, extension);
    return file + extension;
}

} // namespace

long SccQuery::query(const CStringList &files, long *status, void *context) {
    if (context == nullptr) {
        return -1;
    }
    std::vector<char *> array = provider::fileArray(files);
    const long count = files.GetCount();
    provider::CallLog log(source);
    log.before(entry, std::min(count, 1L), array.data()); // required: only the first, however many there are
    const long result = CMProperty::getSCCdll().SccQueryInfo(context, count, array.data(), status);
    log.returned(entry, result);
    return result;
}

void SccQuery::queryAndSetStatus(IUnit *unit, void *context) {
    if (CMProperty::getShowCMStatus() == 0 || unit == nullptr || context == nullptr) {
        return;
    }
    CString name = unit->getFullFileName();
    char *file = name.GetBuffer(0);
    long status = SCC_STATUS_NOTCONTROLLED;
    provider::CallLog log(source);
    log.before(entry, name);
    const long result = CMProperty::getSCCdll().SccQueryInfo(context, 1, &file, &status);
    log.after(entry);
    if (result == SCC_OK) {
        unit->setCMState(status);
    }
}

void SccQuery::queryAndSetStatus(CMUnitList &units, void *context) {
    if (isProviderPropertyTrue(keys::queryOneByOne)) {
        queryAndSetStatusOneByOne(units, context);
        return;
    }
    if (CMProperty::getShowCMStatus() == 0) {
        return;
    }
    CStringList files;
    for (const IUnit *const unit : units) {
        if (unit != nullptr) {
            files.AddTail(unit->getFullFileName());
        }
    }
    std::vector<long> status(static_cast<std::size_t>(units.GetCount()), SCC_STATUS_NOTCONTROLLED);
    if (query(files, status.data(), context) != SCC_OK) {
        return;
    }
    provider::CallLog log(source);
    auto state = status.begin();
    for (IUnit *const unit : units) {
        if (unit != nullptr) {
            unit->setCMState(*state);
            log.write("Status of " + unit->getMyStrForLog() + " is " + std::to_string(*state));
        }
        ++state; // required: for a null entry too
    }
}

void SccQuery::queryAndSetStatusOneByOne(CMUnitList &units, void *context) {
    if (CMProperty::getShowCMStatus() == 0) {
        return;
    }
    for (IUnit *const unit : units) {
        queryAndSetStatus(unit, context);
    }
}

void SccQuery::queryAndSetStatus(CMArchiveItemList &items, void *context, int recursive) {
    CStringList files;
    for (const CMArchiveItem *const item : items) {
        const IUnit *const unit = item == nullptr ? nullptr : IUnit::getByFile(nameForHost(*item));
        if (unit != nullptr) {
            ATMRecursiveHelper::getListOFFilesIn(unit, files, recursive, 0);
        }
    }
    CMUnitList units;
    for (const CString &file : files) {
        if (IUnit *const unit = IUnit::getByFile(file)) {
            units.AddTail(unit);
        }
    }
    queryAndSetStatus(units, context);
}
