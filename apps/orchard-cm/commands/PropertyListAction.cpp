#include "apps/orchard-cm/commands/PropertyActions.h"

#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class PropertyListAction : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("TEXT", text_, "List only keys that contain this text, in any case");
        app.add_option("--unit", unit_, "List those of this unit instead of the active configuration")
            ->type_name("UNIT");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        const IDObject &object = unit_.empty() ? defaultReferee() : unitNamed(project, unit_);
        const auto found = propertiesOf(object, text_);
        Json properties = Json::array();
        for (const auto &facts : found) {
            properties.push_back({{"metaclass", facts.metaclass},
                                  {"key", facts.key},
                                  {"value", facts.value},
                                  {"source", facts.source},
                                  {"place", facts.place}});
        }
        context.output.result({{"properties", std::move(properties)}}, [&](std::ostream &out) {
            Table table{"METACLASS", "KEY", "FROM", "VALUE"};
            for (const auto &facts : found) {
                table.add({facts.metaclass, facts.key, facts.source, facts.value});
            }
            table.write(out);
        });
        return ExitCode::done;
    }

  private:
    std::string text_;
    std::string unit_;
};

} // namespace

std::unique_ptr<Command> makePropertyListAction() { return std::make_unique<PropertyListAction>(); }

} // namespace orchard_cm
