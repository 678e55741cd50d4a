#include "apps/orchard-cm/commands/PropertyActions.h"

#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

class PropertySetAction : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("KEY", key_, "The property's key")->required();
        app.add_option("VALUE", value_, "Its value; may be empty, and stands behind '--' if it begins with '-'")
            ->required();
        app.add_option("--unit", unit_, "Set it on this unit instead of the project")->type_name("UNIT");
        app.add_option("--metaclass", metaclass_,
                       "Where to set it: a tool's name, or a general metaclass; needed only for a new key")
            ->type_name("NAME");
    }

    ExitCode run(Context &context) override {
        IProject &project = context.session.project();
        IDObject &object = unit_.empty() ? static_cast<IDObject &>(project) : unitNamed(project, unit_);
        // A mistyped key would be a property that nobody reads, so a new one needs its metaclass.
        const std::string metaclass =
            metaclass_.empty() ? requireProperty(object, key_, {}).metaclass : metaclass_;
        setProperty(object, metaclass, key_, value_);
        context.session.save();
        const PropertyFacts now = requireProperty(object, key_, metaclass);
        context.output.result({{"metaclass", metaclass}, {"key", key_}, {"value", value_}, {"source", now.source}},
                              [&](std::ostream &out) {
                                  out << metaclass << '.' << key_ << " = " << value_ << " (" << now.source
                                      << ")\n";
                              });
        return ExitCode::done;
    }

  private:
    std::string key_;
    std::string value_;
    std::string unit_;
    std::string metaclass_;
};

} // namespace

std::unique_ptr<Command> makePropertySetAction() { return std::make_unique<PropertySetAction>(); }

} // namespace orchard_cm
