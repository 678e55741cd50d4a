#include "apps/orchard-cm/commands/Commands.h"

#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitFacts.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "orchard/model/ModelView.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

namespace {

/// Describes an element, with the elements inside it that have no file of their own.
Json elementToJson(const IDObject &element) {
    Json json = {{"kind", element.getMetaClassDisplayName().str()}, {"name", element.getName().str()}};
    if (const auto type = orchard::typeOf(element); !type.empty()) {
        json["type"] = type;
    }
    if (const auto description = orchard::descriptionOf(element); !description.empty()) {
        json["description"] = description;
    }
    Json elements = Json::array();
    Json units = Json::array();
    for (const IDObject *const inner : orchard::elementsInside(element)) {
        if (inner->isSaveUnit()) {
            units.push_back(inner->getName().str());
        } else {
            elements.push_back(elementToJson(*inner));
        }
    }
    if (!elements.empty()) {
        json["elements"] = std::move(elements);
    }
    if (!units.empty()) {
        json["units"] = std::move(units);
    }
    return json;
}

std::string textOf(const Json &json, const char *key) { return json.value(key, std::string()); }

constexpr std::size_t labelWidth = 13;

/// Indents the further lines of a value below its first one.
void writeLine(std::ostream &out, const char *label, const std::string &value) {
    if (value.empty()) {
        return;
    }
    out << "  " << label << std::string(labelWidth - std::string_view(label).size(), ' ');
    for (const char character : value) {
        out << character;
        if (character == '\n') {
            out << std::string(2 + labelWidth, ' ');
        }
    }
    out << '\n';
}

void writeElements(std::ostream &out, const Json &json, std::size_t depth) {
    const std::string indent(2 * depth, ' ');
    for (const auto &element : json.value("elements", Json::array())) {
        out << indent << textOf(element, "kind") << ' ' << textOf(element, "name");
        if (element.contains("type")) {
            out << ": " << textOf(element, "type");
        }
        out << '\n';
        if (element.contains("description")) {
            out << indent << "    " << textOf(element, "description") << '\n';
        }
        writeElements(out, element, depth + 1);
    }
}

void write(std::ostream &out, const Json &json) {
    out << textOf(json, "type") << ' ' << textOf(json, "path") << '\n';
    writeLine(out, "File", textOf(json, "file"));
    writeLine(out, "State", textOf(json, "state"));
    writeLine(out, "Version", textOf(json, "version"));
    writeLine(out, "Locked by", textOf(json, "locker"));
    writeLine(out, "Modified", json.value("modified", false) ? "yes" : "");
    writeLine(out, "Reference", json.value("reference", false) ? "yes" : "");
    writeLine(out, "External", json.value("external", false) ? "yes" : "");
    writeLine(out, "Directory", textOf(json, "directory"));
    writeLine(out, "Header", textOf(json, "header"));
    writeLine(out, "Description", textOf(json, "description"));
    writeElements(out, json, 1);
    for (const auto &unit : json.value("units", Json::array())) {
        writeLine(out, "Unit", unit.get<std::string>());
    }
}

class ShowCommand : public Command {
  public:
    void declare(CLI::App &app) override {
        app.add_option("UNIT", unit_, "A unit by its name, its path in the model or its file")->required();
    }

    ExitCode run(Context &context) override {
        const IUnit &unit = unitNamed(context.session.project(), unit_);
        Json json = toJson(factsOf(unit));
        json["modified"] = unit.isModified();
        json["stub"] = unit.isStub();
        json["reference"] = unit.isReference();
        json["external"] = unit.isExternalUnitRecursive();
        json["directory"] = unit.getPersistAs().str();
        json["header"] = unit.getCMHeader().str();
        const Json contents = elementToJson(unit);
        for (const char *const key : {"description", "elements", "units"}) {
            if (contents.contains(key)) {
                json[key] = contents[key];
            }
        }
        context.output.result({{"unit", json}}, [&](std::ostream &out) { write(out, json); });
        return ExitCode::done;
    }

  private:
    std::string unit_;
};

} // namespace

std::unique_ptr<Command> makeShowCommand() { return std::make_unique<ShowCommand>(); }

} // namespace orchard_cm
