#include "CM/CMSupport/provider/ListArchiveSCC.h"

#include "CM/CMSupport/core/ItemTexts.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/RepositoryFiles.h"
#include "CM/CMSupport/provider/FileNameList.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCPopListFunc.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IProject.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace {

CMArchiveItem::Mode modeOf(long status) {
    if (status == SCC_STATUS_INVALID) {
        return CMArchiveItem::unknown;
    }
    return (status & SCC_STATUS_OUTEXCLUSIVE) != 0 ? CMArchiveItem::readOnly : CMArchiveItem::readWrite;
}

class Run {
  public:
    explicit Run(CMArchiveItemList &items) : items_(items) {}

    [[nodiscard]] OutcomeReport &report() { return report_; }

    /// Has the provider enumerate the files of the directories. What it answers doesn't matter, only what it has
    /// enumerated. Returns whether that is anything.
    bool enumerate(void *context, const CStringList &directories, long flags) {
        SCCdll &library = CMProperty::getSCCdll();
        std::vector<char *> array = provider::fileArray(directories);
        std::vector<long> status(array.size(), SCC_STATUS_NOTCONTROLLED);
        run_.log().before(library.SccPopulateList.name());
        const long result =
            library.SccPopulateList(context, SCC_COMMAND_GET, directories.GetCount(), array.data(),
                                    SCCPopListFunc::InternalPopListFunc, nullptr, status.data(), flags);
        run_.logResult(library.SccPopulateList.name(), result);
        provider::reportCall(report_, library.SccPopulateList, result);
        return !CMProperty::getFileNamesList().IsEmpty();
    }

    /// Appends an item for each enumerated file. Returns false, with a message, if their states can't be read.
    bool append(void *context) {
        SCCdll &library = CMProperty::getSCCdll();
        const CStringList &names = CMProperty::getFileNamesList().names();
        std::vector<char *> array = provider::fileArray(names);
        std::vector<long> status(array.size(), SCC_STATUS_NOTCONTROLLED);
        run_.log().before(library.SccQueryInfo.name(), names.GetCount(), array.data());
        const long result = library.SccQueryInfo(context, names.GetCount(), array.data(), status.data());
        run_.logResult(library.SccQueryInfo.name(), result);
        provider::reportCall(report_, library.SccQueryInfo, result);
        if (result != SCC_OK) {
            SCCTextOutProc::InternalTextOutProc(result, 0);
            return false;
        }
        const bool wantsADot = isGeneralPropertyTrue(keys::ignoreWithoutDot, true);
        ItemTexts texts;
        auto state = status.begin();
        for (const CString &name : names) {
            CMArchiveItem::Listed listed;
            listed.fileNameWithPath = name.view();
            listed.mode = modeOf(*state++);
            auto item = std::make_unique<CMArchiveItem>(listed, texts);
            if (!wantsADot || item->getFileName().view().find('.') != std::string_view::npos) {
                CMArchiveItem *appended = item.release();
                items_.AddTail(appended);
            }
        }
        return true;
    }

  private:
    CMArchiveItemList &items_;
    provider::ProviderRun run_{"../CM/CMSupport/ListArchiveSCC"};
    OutcomeReport report_;
};

/// Returns the directories of the project and of its units, each of them once.
void collectDirectories(const IProject &project, FileNameList &directories) {
    directories.AddTail(project.getProjectFileDirectory());
    IUnitIterator walk = walkRepositoryFiles();
    for (const IUnit *unit = walk.first(); unit != nullptr; unit = walk.next()) {
        if (isRepositoryFileForCM(*unit)) {
            directories.AddTail(unit->getOwnDirectory());
        }
    }
    directories.AddTail(project.getOwnDirectory());
}

} // namespace

int ListArchiveSCC::operator()(CMArchiveItemList &items, CMUnitList & /*units*/) {
    CMProperty::getFileNamesList().RemoveAll();
    IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return 0;
    }
    FileNameList directories;
    collectDirectories(*project, directories);
    Run run(items);
    int result = 0;
    if (pvContextStruct *const record = provider::contextFor(project, run.report())) {
        void *const context = record->getpvContextPtr();
        if (!run.enumerate(context, directories.names(), SCC_PL_DIR)) {
            result = 1;
        } else if (run.append(context)) {
            CMProperty::setPvContext(context); // the operations on these items work in it
            result = 1;
        }
    }
    run.report().send();
    return result;
}

int ListArchiveSCC::operator()(CMArchiveItemList &items, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    CMProperty::getFileNamesList().RemoveAll();
    void *const context = CMProperty::getPvContext();
    Run run(items);
    const bool hasFiles = run.enumerate(context, {}, 0);
    if (hasFiles) {
        run.append(context);
    }
    run.report().send();
    return hasFiles ? 0 : 1;
}
