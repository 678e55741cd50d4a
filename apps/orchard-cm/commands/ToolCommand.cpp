#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class ToolCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("NAME", name_,
                       "The tool to choose (see 'orchard-cm tools'), or None; without it, show the tool");
    }

    ExitCode run(Context &context) override {
        IProject &project = context.session.project();
        if (!name_.empty()) {
            static_cast<void>(CMProperty::setCMTool(installedToolNamed(name_), &project));
            context.session.save();
        }
        // Where the active configuration has a tool of its own, that one is in use, and its source says so.
        const PropertyFacts tool = requireProperty(defaultReferee(), IPN::CMTool.str(), IPN::CMGeneral.str());
        context.output.result({{"tool", tool.value}, {"source", tool.source}},
                              [&](std::ostream &out) { out << tool.value << " (" << tool.source << ")\n"; });
        return ExitCode::done;
    }

  private:
    std::string name_;
};

} // namespace

std::unique_ptr<Command> makeToolCommand() { return std::make_unique<ToolCommand>(); }

} // namespace orchard_cm
