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

/// The template that the library takes for the unit. Where the tool's directories are checked out once for all
/// files in them, it is another, and the files of a directory come with its runs.
CString templateFor(const IUnit *unit) {
    static const CString onceForADirectory("CheckOutCheckInDirectoryOnceDuringAddToArchive");
    static const CString inDirectory("AddMember_WithoutCheckOutCheckInDirectory");
    static const CString controlledFile("AddMember_ControlledFile");
    const auto *const once = CMProperty::getToolProperty(onceForADirectory, nullptr, 0, false);
    if (once != nullptr && once->getBool() != 0) {
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
        static_cast<void>(context.session.project());
        const std::string comment = comment_.optional(context);
        const Operation add{.wording = {"added", false},
                            .expected = {},
                            .key = templateFor,
                            .arguments = [&](TemplateArguments &arguments) {
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
