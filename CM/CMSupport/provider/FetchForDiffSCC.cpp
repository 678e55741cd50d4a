// The forms of fetch that bring archived files into another directory, for a comparison.
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/provider/FetchSCC.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/platform/Files.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr auto source = "../CM/CMSupport/FetchSCC";

CString targetDirectoryOf(const CMArgumentList &args) {
    CMArgument *const tail = args.IsEmpty() ? nullptr : args.GetTail();
    return tail == nullptr ? CString() : tail->substitute("targetDir");
}

CString directoryOf(const IUnit &unit) { return unit.getOwnDirectory(); }
CString directoryOf(const CMArchiveItem &item) { return item.getLocalPath(); }

template <class ITEM> CString pathOf(const ITEM &item) {
    return paths::join(directoryOf(item), item.getFileName());
}

/// Fetches the files of all items in one call. A null entry counts as a file.
template <class LIST>
long fetch(provider::ProviderRun &run, const LIST &items, void *context, provider::CallFiles &call,
           long loggedFiles) {
    for (auto *const item : items) {
        if (item == nullptr) {
            call.addEmpty();
            continue;
        }
        OutcomeReport report(*item);
        if (report.mayBegin()) {
            call.add(pathOf(*item), std::move(report));
        }
    }
    SCCdll &library = CMProperty::getSCCdll();
    std::vector<char *> array = provider::fileArray(call.files);
    const long count = call.files.GetCount();
    run.log().before(library.SccGet.name(), std::min(count, loggedFiles), array.data());
    const long result = library.SccGet(context, run.window(), count, array.data(), 0, CMProperty::getPvOptions());
    run.logResult(library.SccGet.name(), result);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    return result;
}

/// Moves the fetched files; the current directory becomes the target directory.
template <class LIST> void moveFiles(const LIST &items, const CString &target) {
    platform::setCurrentDirectory(target);
    for (const auto *const item : items) {
        if (item != nullptr) {
            std::rename(pathOf(*item).c_str(), paths::join(target, item->getFileName()).c_str());
        }
    }
}

} // namespace

int FetchSCC::FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList & /*diags*/) {
    const CString target = targetDirectoryOf(args);
    provider::ProviderRun run(source);
    pvContextStruct *const record = run.openSharedContext("perform fetch for diff", provider::headOf(units));
    if (record == nullptr) {
        return 0;
    }
    provider::CallFiles call;
    const long result = fetch(run, units, record->getpvContextPtr(), call, 1); // required: one file is logged
    if (result == SCC_OK) {
        moveFiles(units, target);
        platform::setCurrentDirectory("..");
    }
    call.send(CMProperty::getSCCdll().SccGet, result);
    return 0;
}

int FetchSCC::FetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList & /*diags*/) {
    if (items.IsEmpty()) {
        return 0;
    }
    const CString target = targetDirectoryOf(args);
    provider::ProviderRun run(source);
    provider::CallFiles call;
    const long result = fetch(run, items, CMProperty::getPvContext(), call, items.GetCount());
    if (result == SCC_OK) {
        moveFiles(items, target);
        args.RemoveAll();
    }
    call.send(CMProperty::getSCCdll().SccGet, result);
    return 0;
}
