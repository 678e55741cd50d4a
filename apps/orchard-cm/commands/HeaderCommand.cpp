#include "apps/orchard-cm/commands/Commands.h"

#include "CM/CMSupport/core/CMTraitFacade.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitFacts.h"
#include "apps/orchard-cm/model/UnitSelection.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

void writeText(std::ostream &out, const char *label, const std::string &text) {
    out << label << (text.empty() ? " none\n" : "\n");
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find('\n', at), text.size());
        out << "    " << text.substr(at, end - at) << '\n';
        at = end + 1;
    }
}

class HeaderCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("UNIT", unit_, "A unit by its name, its path in the model or its file")->required();
        app.footer(
            "The header is the text with the tool's keywords at the top of a unit's file. A new unit gets the\n"
            "default header, the text of the tool's property HeaderFile.");
    }

    ExitCode run(Context &context) override {
        const IUnit &unit = unitNamed(context.session.project(), unit_);
        const UnitFacts facts = factsOf(unit);
        const std::string header = unit.getCMHeader().str();
        const std::string standard = theCMFacade.getTheDefaultHeader().str();
        Json json = {{"path", facts.path},       {"file", facts.file},     {"header", header},
                     {"version", facts.version}, {"locker", facts.locker}, {"defaultHeader", standard}};
        context.output.result({{"unit", std::move(json)}}, [&](std::ostream &out) {
            out << facts.type << ' ' << facts.path << '\n';
            out << "Version: " << (facts.version.empty() ? "none" : facts.version) << '\n';
            out << "Locked by: " << (facts.locker.empty() ? "not shown in the header" : facts.locker) << '\n';
            writeText(out, "Header:", header);
            writeText(out, "Default header:", standard);
        });
        return ExitCode::done;
    }

  private:
    std::string unit_;
};

} // namespace

std::unique_ptr<Command> makeHeaderCommand() { return std::make_unique<HeaderCommand>(); }

} // namespace orchard_cm
