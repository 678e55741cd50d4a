#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Comment.h"
#include "apps/orchard-cm/model/Session.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class AddCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        comment_.declare(app);
        options_.declareUnits(app);
        app.footer("The units are saved first. Exits with 0 only if every unit was added and no error was shown.");
    }

    ExitCode run(Context &context) override {
        static_cast<void>(context.session.project());
        const std::string comment = comment_.optional(context);
        const Operation add{
            .wording = {"added", false}, .expected = {}, .arguments = [&](TemplateArguments &arguments) {
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
