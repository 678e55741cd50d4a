#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/TemplateArguments.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/model/Unresolved.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class ExpandCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        auto *const what = app.add_option_group("What to expand");
        what->add_option("--property", property_, "Expand the value of a property of the tool")->type_name("KEY");
        what->add_option("TEMPLATE", template_, "Expand this text");
        what->require_option(1);
        app.add_option("--unit", unit_, "The unit for $Unit and the like")->type_name("UNIT");
        app.add_option("--mode", mode_, "The value of $mode: ro (the default) or rw")
            ->type_name("ro|rw")
            ->check(CLI::IsMember({"ro", "rw"}));
        app.add_option("--label", label_, "The value of $label; empty by default")->type_name("LABEL");
        app.add_option("--log", log_, "The value of $log")->type_name("TEXT");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        TemplateArguments arguments;
        arguments.addMode(mode_ == "rw");
        arguments.addLabel(label_);
        if (log_) {
            arguments.addLog(*log_);
        }
        arguments.addArchive();
        if (!unit_.empty()) {
            arguments.addUnit(unitNamed(project, unit_));
        }
        CString source(template_);
        if (!property_.empty()) {
            source = toolProperty(property_).getValue();
        }
        CString expanded;
        CString error;
        const bool done = CMProperty::Expand(source, arguments.list(), expanded, error, false) != 0;
        context.output.result({{"template", source.str()}, {"expanded", expanded.str()}},
                              [&](std::ostream &out) { out << expanded << '\n'; });
        if (!done) {
            fail(context, expanded.str(), arguments);
        }
        return ExitCode::done;
    }

  private:
    [[noreturn]] void fail(Context &context, const std::string &halfExpanded, TemplateArguments &arguments) const {
        const auto unresolved = findUnresolved(halfExpanded, arguments.list());
        const auto &chain = unresolved.chain;
        context.output.field("unresolved", chain);
        if (chain.empty()) {
            throw Failure(ExitCode::failed, "a name in a condition of the template could not be resolved",
                          "Run again with --trace to see each step of the expansion.");
        }
        std::string through;
        for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
            through += (i == 0 ? ", which is in the value of '" : "', in that of '") + chain[chain.size() - 2 - i];
        }
        throw Failure(ExitCode::failed, whatFailed(unresolved) + through + (through.empty() ? "" : "'"),
                      remedy(unresolved));
    }
    [[nodiscard]] std::string remedy(const Unresolved &unresolved) const {
        if (unresolved.refersToItself) {
            return "Remove it from the value that contains it.";
        }
        if (unresolved.exceedsLimit) {
            return "Use fewer levels: properties may refer to each other 200 levels deep.";
        }
        return unit_.empty() && namesUnit(unresolved.chain.back())
                   ? "Name the unit with --unit."
                   : "Give it as an argument, or set a property of that name for the tool.";
    }
    static bool namesUnit(const std::string &variable) { return CString(variable).MakeLower().Find("unit") >= 0; }

    std::string property_;
    std::string template_;
    std::string unit_;
    std::string mode_ = "ro";
    std::string label_;
    std::optional<std::string> log_;
};

} // namespace

std::unique_ptr<Command> makeExpandCommand() { return std::make_unique<ExpandCommand>(); }

} // namespace orchard_cm
