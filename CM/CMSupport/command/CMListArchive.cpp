#include "CM/CMSupport/command/CMListArchive.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/ListingParser.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"

namespace {

constexpr command::RunTexts texts{.source = "../CM/CMSupport/ListArchive",
                                  .before = "Executing the following command to list the files in the archive: ",
                                  .after = "List archive command returned the following: "};

command::ListingRules rulesOf(const IProject &project) {
    static const CString showAllKey("ShowAllFilesInArchive");
    static const CString dotKey("IgnoreArchiveItemsWithoutDot");
    const IProperty *const showAll = CMProperty::getToolProperty(showAllKey, nullptr, IProperty::inherited, false);
    const IProperty *const dot = project.findProperty(IPN::CM, IPN::General, dotKey, IProperty::inherited);
    return {.projectFile = project.getFileName(),
            .projectSuffix = project.getFileExtension(),
            .showsAll = showAll != nullptr && showAll->getBool(),
            .wantsADot = dot == nullptr || dot->getBool()};
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
    CString command;
    int result = CMProperty::ExpandProperty(IPN::CMListArchive, args, command, error, false);
    if (result != 1) {
        return result;
    }
    CString output;
    {
        LogTrace::Log log(LogTrace::Log::cm);
        result = command::runLogged(log, texts, command, output, error);
    }
    return result == 1 ? command::parseListing(output, rules, items) : result;
}
