#include "apps/orchard-cm/commands/Commands.h"
#include "apps/orchard-cm/commands/ToolCheckAction.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/Tools.h"

#include <CLI/CLI.hpp>

#include <functional>

namespace orchard_cm {

namespace {

class ToolCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        auto *const check = app.add_subcommand("check", "Find what is missing or wrong in a tool's property set");
        check->callback([this] { checks_ = true; });
        check_.declare(*check);
        app.require_subcommand(0, 1);
        app.add_option("NAME", name_,
                       "The tool to choose (see 'orchard-cm tools'), or None; without it, show the tool");
    }

    ExitCode run(Context &context) override {
        if (checks_) {
            return check_.run(context);
        }
        const ProjectHold held = name_.empty() ? ProjectHold() : context.session.holdAlone();
        IProject &project = context.session.project();
        if (!name_.empty()) {
            const std::string name = installedToolNamed(name_);
            choose(project, name, [&] { context.session.save(); });
        }
        // The active configuration may have its own tool. That one is in use, and its source shows it.
        const PropertyFacts tool = requireProperty(defaultReferee(), IPN::CMTool.str(), IPN::CMGeneral.str());
        context.output.result({{"tool", tool.value}, {"source", tool.source}},
                              [&](std::ostream &out) { out << tool.value << " (" << tool.source << ")\n"; });
        return ExitCode::done;
    }

  private:
    /// Both properties name the tool: the one for all tools decides which tool is in use, the general one decides
    /// whose way of adding units applies.
    static void choose(IProject &project, const std::string &name, const std::function<void()> &save) {
        PropertyBefore inUse(project, IPN::CMGeneral.str(), IPN::CMTool.str());
        PropertyBefore ofAdding(project, IPN::General.str(), IPN::CMTool.str());
        inUse.runOrRestore([&] {
            ofAdding.runOrRestore([&] {
                static_cast<void>(CMProperty::setCMTool(name, &project));
                setProperty(project, IPN::General.str(), IPN::CMTool.str(), name);
                save();
            });
        });
    }

    ToolCheckAction check_;
    bool checks_ = false;
    std::string name_;
};

} // namespace

std::unique_ptr<Command> makeToolCommand() { return std::make_unique<ToolCommand>(); }

} // namespace orchard_cm
