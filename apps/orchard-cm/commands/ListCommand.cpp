#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "apps/orchard-cm/base/Table.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/remembered/ListWorkspace.h"
#include "orchard/storage/UnitSearch.h"

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
        app.add_flag("--paths", pathsOnly_, "List only the paths in the model, one on each line");
        app.footer(
            "State: U not loaded, RO read-only, RW read-write. Version and locker are those in the header of\n"
            "the unit's file; 'orchard-cm archive' shows those in the archive.");
    }

    ExitCode run(Context &context) override {
        Json units = Json::array();
        std::string paths;
        Table table{"STATE", "TYPE", "VERSION", "LOCKER", "UNIT", "FILE"};
        Session &session = context.session;
        const orchard::ListOptions options{session.openOptions(),
                                           [&session]() -> IProject & { return session.project(); },
                                           [] { return CMProperty::getUseSCCtool() == 0; }};
        session.tellUnfinished();
        orchard::listWorkspace(session.projectFile(), options, [&](const orchard::UnitRow &row) {
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
