#include "apps/orchard-cm/commands/Commands.h"
#include "apps/orchard-cm/commands/PropertyActions.h"

#include <CLI/CLI.hpp>

#include <array>

namespace orchard_cm {

namespace {

/// Passes everything to the chosen action.
class PropertyCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.require_subcommand(1);
        for (Action &action : actions_) {
            CLI::App *const sub = app.add_subcommand(action.name, action.summary);
            sub->callback([this, &action] { chosen_ = action.command.get(); });
            action.command->declare(*sub);
        }
    }

    ExitCode run(Context &context) override { return chosen_->run(context); }

  private:
    struct Action {
        const char *name;
        const char *summary;
        std::unique_ptr<Command> command;
    };
    std::array<Action, 3> actions_{
        Action{"get", "Show a property and where its value comes from", makePropertyGetAction()},
        Action{"set", "Set a property on the project, or on a unit", makePropertySetAction()},
        Action{"list", "List the properties in force and where each value comes from", makePropertyListAction()}};
    Command *chosen_ = nullptr; // the parser requires one
};

} // namespace

std::unique_ptr<Command> makePropertyCommand() { return std::make_unique<PropertyCommand>(); }

} // namespace orchard_cm
