#include "CM/CMSupport/provider/RenameMemberSCC.h"

#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/CMSupport/provider/ProviderRename.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Texts.h"

namespace {

/// A path, cut at its last separator of either kind.
struct SplitPath {
    explicit SplitPath(const CString &path) {
        const auto separator = path.view().find_last_of("/\\");
        if (separator == std::string_view::npos) {
            file = path;
        } else {
            directory = path.view().substr(0, separator);
            file = path.view().substr(separator + 1);
        }
    }
    CString directory;
    CString file;
};

class Run {
  public:
    Run(void *context, provider::ProviderRun &run, OutcomeReport &report)
        : context_(context), run_(run), report_(report) {}

    long rename(const CString &from, const CString &to) {
        run_.log().write("Invoking SccRename for " + from);
        return provider::callRename(run_, context_, from, to, report_);
    }
    /// The file keeps up with the name of its directory.
    long renameWithDirectory(const CString &oldPath, const CString &newPath) {
        const SplitPath from(oldPath);
        const SplitPath to(newPath);
        const long result = rename(from.directory, to.directory);
        return result == SCC_OK ? rename(paths::join(to.directory, from.file), paths::join(to.directory, to.file))
                                : result;
    }

  private:
    void *context_;
    provider::ProviderRun &run_;
    OutcomeReport &report_;
};

int rename(IUnit &unit, const CString &oldPath, const CString &newPath, OutcomeReport &report) {
    provider::ProviderRun run("../CM/CMSupport/RenameMemberSCC");
    // Required: "undo check out" (RenameByProvider.LogsItsContextAsThatOfAnUndo).
    pvContextStruct *const record = run.openContext("perform undo check out", &unit, report);
    if (record == nullptr) {
        return 0;
    }
    Run renaming(record->getpvContextPtr(), run, report);
    const long result = hasOwnDirectory(&unit) ? renaming.renameWithDirectory(oldPath, newPath)
                                               : renaming.rename(oldPath, newPath);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 1);
        return 0;
    }
    SCCTextOutProc::InternalTextOutProc(resources::text(resources::Text::providerHasRenamed),
                                        SCCTextOutProc::success);
    return 1;
}

} // namespace

int RenameMemberSCC::operator()(CMUnitList & /*units*/, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                                bool /*hybrid*/) {
    return 0;
}

int RenameMemberSCC::operator()(IUnit *unit, const CString &oldPath, const CString &newPath,
                                CMDiagnosticList & /*diags*/, bool /*hybrid*/) {
    if (unit == nullptr || oldPath.IsEmpty() || newPath.IsEmpty()) {
        return 0;
    }
    OutcomeReport report(*unit);
    if (oldPath == newPath) {
        report.sendAs(CMOutcome::Kind::nothingToDo);
        return 1;
    }
    const int result = rename(*unit, oldPath, newPath, report);
    report.send();
    return result;
}
