#include "apps/orchard-cm/commands/PropertyActions.h"

#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class PropertyGetAction : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("KEY", key_, "The property's key")->required();
        app.add_option("--unit", unit_, "Look it up on this unit instead of the active configuration")
            ->type_name("UNIT");
        app.add_option("--metaclass", metaclass_, "Look only here: a tool's name, or a general metaclass")
            ->type_name("NAME");
    }

    ExitCode run(Context &context) override {
        const IProject &project = context.session.project();
        const IDObject &object = unit_.empty() ? defaultReferee() : unitNamed(project, unit_);
        const PropertyFacts found = requireProperty(object, key_, metaclass_);
        context.output.result({{"metaclass", found.metaclass},
                               {"key", found.key},
                               {"value", found.value},
                               {"source", found.source},
                               {"place", found.place}},
                              [&](std::ostream &out) {
                                  out << found.value << '\n';
                                  context.output.status().stream()
                                      << "(" << found.metaclass << ", from " << found.source
                                      << (found.place.empty() ? "" : ", " + found.place) << ")\n";
                              });
        return ExitCode::done;
    }

  private:
    std::string key_;
    std::string unit_;
    std::string metaclass_;
};

} // namespace

std::unique_ptr<Command> makePropertyGetAction() { return std::make_unique<PropertyGetAction>(); }

} // namespace orchard_cm
