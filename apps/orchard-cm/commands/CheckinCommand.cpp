#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/commands/OperationOptions.h"
#include "apps/orchard-cm/model/Comment.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/model/ModelView.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class CheckinCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        comment_.declare(app);
        app.add_option("--mode", mode_,
                       "Mode of the files afterwards: ro (read-only, the default) or rw (still checked out)")
            ->type_name("ro|rw")
            ->check(CLI::IsMember({"ro", "rw"}));
        options_.declareLabel(app, "Give the new version this label or number");
        options_.declareUnits(app);
        app.footer(
            "Without --log or --log-file, an editor opens for the comment ($VISUAL, $EDITOR). The model is\n"
            "saved first. Exits with 0 only if every unit was checked in and no error was shown.");
    }

    ExitCode run(Context &context) override {
        requireLabel(options_.label());
        std::vector<std::string> names;
        for (const IUnit *const unit : options_.units(context.session.project())) {
            names.push_back(orchard::pathInModel(*unit));
        }
        const std::string comment = comment_.required(context, "checked in", names);
        const Operation checkIn{.wording = {"checked in", false},
                                .expected = {.writable = mode_ == "rw"},
                                .arguments =
                                    [&](TemplateArguments &arguments) {
                                        arguments.addMode(mode_ == "rw");
                                        arguments.addLabel(options_.label());
                                        arguments.addLog(comment);
                                    },
                                .changes = Changes::units};
        return options_.run(context, checkIn, options_.recursive() ? CMFacade::RecCheckIn : CMFacade::CheckIn);
    }

  private:
    OperationOptions options_;
    CommentOptions comment_;
    std::string mode_ = "ro";
};

} // namespace

std::unique_ptr<Command> makeCheckinCommand() { return std::make_unique<CheckinCommand>(); }

} // namespace orchard_cm
