#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Comment.h"
#include "apps/orchard-cm/model/Session.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

/// Whether the library checks each directory out once and adds all files in it: it asks the project for the tool
/// under the general properties.
bool isOncePerDirectory(const IProject &project) {
    static const CString switchKey("CheckOutCheckInDirectoryOnceDuringAddToArchive");
    const IProperty *const tool = project.findProperty(IPN::CM, IPN::General, IPN::CMTool, IProperty::inherited);
    const CString name = tool == nullptr ? CString() : tool->getValue();
    if (name.CompareNoCase("None") == 0) {
        return false;
    }
    const IProperty *const once = project.findProperty(IPN::CM, name, switchKey, IProperty::inherited);
    return once != nullptr && once->getBool() != 0;
}

/// The template that the library takes for the unit. Where the tool's directories are checked out once for all
/// files in them, it is another, and the files of a directory come with its runs.
CString templateFor(const IProject &project, const IUnit *unit) {
    static const CString inDirectory("AddMember_WithoutCheckOutCheckInDirectory");
    static const CString controlledFile("AddMember_ControlledFile");
    if (isOncePerDirectory(project)) {
        return inDirectory;
    }
    const auto *const forFiles = CMProperty::getToolProperty(controlledFile, nullptr, 0, false);
    const bool isFile = dynamic_cast<const IEmbededFile *>(unit) != nullptr;
    return isFile && forFiles != nullptr && !forFiles->getValue().IsEmpty() ? controlledFile : IPN::CMAddMember;
}

class AddCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        comment_.declare(app);
        options_.declareUnits(app);
        app.footer("The units are saved first. Ends with 0 only if every one was added and no error was shown.");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        const std::string comment = comment_.optional(context);
        const Operation add{.wording = {"added", false},
                            .expected = {},
                            .key = [&](const IUnit *unit) { return templateFor(project, unit); },
                            .arguments =
                                [&](TemplateArguments &arguments) {
                                    arguments.addArchive();
                                    arguments.addLog(comment);
                                }};
        return options_.run(context, add,
                            [](CMUnitList &units, CMArgumentList &arguments, CMDiagnosticList &diagnostics) {
                                return CMFacade::AddMember(units, arguments, diagnostics);
                            });
    }

  private:
    OperationOptions options_;
    CommentOptions comment_;
};

} // namespace

std::unique_ptr<Command> makeAddCommand() { return std::make_unique<AddCommand>(); }

} // namespace orchard_cm
