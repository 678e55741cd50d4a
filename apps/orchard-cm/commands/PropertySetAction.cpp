#include "apps/orchard-cm/commands/PropertyActions.h"

#include "apps/orchard-cm/model/Properties.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/toolcheck/KnownKeys.h"
#include "apps/orchard-cm/toolcheck/SetCheck.h"
#include "orchard/model/Paths.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>

namespace orchard_cm {

namespace {

class PropertySetAction : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("KEY", key_, "The property's key")->required();
        app.add_option("VALUE", value_, "Its value; may be empty; put '--' before a value that begins with '-'")
            ->required();
        app.add_option("--unit", unit_, "Set it on this unit instead of the project")->type_name("UNIT");
        app.add_option("--metaclass", metaclass_,
                       "Where to set it: a tool's name, or a general metaclass; needed only for a new key")
            ->type_name("NAME");
    }

    ExitCode run(Context &context) override {
        requireNames();
        requireValue(context);
        const ProjectHold held = context.session.holdAlone();
        IProject &project = context.session.project();
        IDObject &object = unit_.empty() ? static_cast<IDObject &>(project) : unitNamed(project, unit_);
        // Nobody would read a property with a mistyped key, so a new one needs its metaclass.
        const std::string metaclass =
            metaclass_.empty() ? requireProperty(object, key_, {}).metaclass : metaclass_;
        PropertyBefore(object, metaclass, key_).runOrRestore([&] {
            setProperty(object, metaclass, key_, value_);
            context.session.save();
        });
        const PropertyFacts now = requireProperty(object, key_, metaclass);
        context.output.result({{"metaclass", metaclass},
                               {"key", key_},
                               {"value", value_},
                               {"source", now.source},
                               {"place", now.place}},
                              [&](std::ostream &out) {
                                  out << metaclass << '.' << key_ << " = " << value_ << " (" << now.source
                                      << ")\n";
                              });
        warnIfHidden(context, metaclass);
        return ExitCode::done;
    }

  private:
    /// The library looks up only plain names: any other name would be written, but never found again.
    void requireNames() const {
        const auto isPlain = [](const std::string &name) {
            return !name.empty() && std::ranges::all_of(name, [](char c) {
                return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-' || c == '.';
            });
        };
        if (!isPlain(key_)) {
            throw Failure(ExitCode::usage, "'" + key_ +
                                               "' can't be a property's key: a key is made of letters, "
                                               "digits, '_', '-' and '.'");
        }
        if (!metaclass_.empty() &&
            (metaclass_.front() == ' ' || metaclass_.back() == ' ' || !orchard::faultOfPath(metaclass_).empty() ||
             metaclass_.find_first_of("<&\\") != std::string::npos)) {
            throw Failure(ExitCode::usage, "'" + metaclass_ +
                                               "' can't be a metaclass: it is the name of a tool, "
                                               "or a general one such as CMGeneral");
        }
    }
    /// An invalid number, truth value or pattern would silently count as no limit, false or no match. An unknown
    /// choice also has a meaning, so it only causes a warning.
    void requireValue(Context &context) const {
        const std::string fault = faultOfValue(key_, value_);
        if (fault.empty()) {
            return;
        }
        if (knownKey(key_)->kind != KeyKind::choice) {
            throw Failure(ExitCode::usage, "this can't be the value of " + key_ + ": " + fault);
        }
        context.output.message(Output::Kind::warning, key_ + ": " + fault);
    }
    /// Properties for the tool's commands are looked up on the active component, which may have its own value.
    void warnIfHidden(Context &context, const std::string &metaclass) const {
        if (!unit_.empty()) {
            return;
        }
        const auto holds = findProperty(defaultReferee(), key_, metaclass);
        if (holds && holds->value != value_) {
            context.output.message(Output::Kind::warning, "'" + holds->value + "' from " + holds->source +
                                                              " still applies to the commands of the tool");
        }
    }

    std::string key_;
    std::string value_;
    std::string unit_;
    std::string metaclass_;
};

} // namespace

std::unique_ptr<Command> makePropertySetAction() { return std::make_unique<PropertySetAction>(); }

} // namespace orchard_cm
