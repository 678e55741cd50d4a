#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMTraitFacade.h"
#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/storage/Projects.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

Json toJson(const orchard::UnitRow &row) {
    Json json = {{"name", row.name},
                 {"path", row.path},
                 {"type", row.type},
                 {"file", row.file},
                 {"state", orchard::unitStateText(row.state)}};
    for (const auto &[key, value] : {std::pair("version", CMTraitFacade::getVersion(row.unit)),
                                     std::pair("locker", CMTraitFacade::getLocker(row.unit))}) {
        if (!value.IsEmpty()) {
            json[key] = value.str();
        }
    }
    return json;
}

class ListCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_flag("--paths", pathsOnly_, "Only the paths in the model, one a line");
        app.footer(
            "State: U not loaded, RO read-only, RW read-write. Version and locker are what the header at the top\n"
            "of the unit's file tells; see 'orchard-cm archive' for what the archive knows.");
    }

    ExitCode run(Context &context) override {
        Json units = Json::array();
        std::string paths;
        Table table{"STATE", "TYPE", "VERSION", "LOCKER", "UNIT", "FILE"};
        context.session.visitUnits([&](const orchard::UnitRow &row) {
            if (context.output.isJson()) {
                units.push_back(toJson(row));
            } else if (pathsOnly_) {
                paths += row.path;
                paths += '\n';
            } else {
                table.add({orchard::unitStateText(row.state), row.type, CMTraitFacade::getVersion(row.unit).view(),
                           CMTraitFacade::getLocker(row.unit).view(), row.path, row.file});
            }
        });
        context.output.result({{"units", std::move(units)}}, [&](std::ostream &out) {
            if (pathsOnly_) {
                out << paths;
            } else {
                table.write(out);
            }
        });
        return ExitCode::done;
    }

  private:
    bool pathsOnly_ = false;
};

} // namespace

std::unique_ptr<Command> makeListCommand() { return std::make_unique<ListCommand>(); }

} // namespace orchard_cm
