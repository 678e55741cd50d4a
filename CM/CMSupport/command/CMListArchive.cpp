#include "CM/CMSupport/command/CMListArchive.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/ListingParser.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"

#include <utility>

namespace {

constexpr command::RunTexts texts{.source = "../CM/CMSupport/ListArchive",
                                  .before = "Executing the following command to list the files in the archive: ",
                                  .after = "List archive command returned the following: "};

command::ListingRules rulesOf(const IProject &project) {
    const IProperty *const showAll =
        CMProperty::getToolProperty(keys::showAllFiles, nullptr, IProperty::inherited, false);
    return {.projectFile = project.getFileName(),
            .projectSuffix = project.getFileExtension(),
            .showsAll = showAll != nullptr && showAll->getBool(),
            .wantsADot = isGeneralPropertyTrue(keys::ignoreWithoutDot, true)};
}

/// Runs the tool's command and appends what it prints to `output`.
int list(CMArgumentList &args, CString &output, CString &error, OutcomeReport &report) {
    if (!command::mayReachCommand(args, report)) {
        return 0;
    }
    CString command;
    const int result = command::expandProperty(IPN::CMListArchive, args, command, false, report);
    if (result != 1) {
        return result;
    }
    LogTrace::Log log(LogTrace::Log::cm);
    return command::runLogged(log, texts, command, output, error, report);
}

} // namespace

int CMListArchive::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return 0;
    }
    const command::ListingRules rules = rulesOf(*project);
    CMArchive archive("");
    const command::PushedArgument pushedArchive(args, archive);
    OutcomeReport report;
    CString output;
    int result = list(args, output, error, report);
    if (result == 1) {
        result = command::parseListing(output, rules, items);
    }
    report.printed(std::move(output));
    report.send();
    return result;
}
