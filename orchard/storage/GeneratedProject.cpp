// Generates large models for experiments: areas with a directory each, lines in them, machines in the lines.
#include "orchard/storage/ProjectBuilder.h"

#include <array>
#include <cstdint>
#include <string>

namespace orchard {

namespace {

constexpr std::size_t machinesInLine = 20;
constexpr std::size_t linesInArea = 24;

class Plant {
  public:
    Plant(ProjectBuilder &builder, std::size_t units) : builder_(builder), left_(units) {}

    void build() {
        if (left_ == 0) {
            return;
        }
        UnitElement &component = builder_.addUnit(builder_.project(), Kind::component, "Plant", "All of it.");
        builder_.setActive(component, builder_.addElement(component, Kind::configuration, "Standard"));
        --left_;
        for (std::size_t area = 1; left_ > 0; ++area) {
            const std::string name = "Area" + std::to_string(area);
            UnitElement &unit = builder_.addUnit(builder_.project(), Kind::subsystem, name, "An area.", name);
            --left_;
            buildLines(unit, area);
        }
    }

  private:
    void buildLines(UnitElement &area, std::size_t number) {
        for (std::size_t line = 1; line <= linesInArea && left_ > 0; ++line) {
            const std::string name = "Line" + std::to_string(number) + "_" + std::to_string(line);
            UnitElement &unit = builder_.addUnit(area, Kind::subsystem, name, "A line of machines.");
            --left_;
            for (std::size_t machine = 1; machine <= machinesInLine && left_ > 0; ++machine) {
                buildMachine(unit, name.substr(4) + "_" + std::to_string(machine));
                --left_;
            }
        }
    }

    void buildMachine(UnitElement &line, const std::string &number) {
        constexpr std::array<const char *, 4> types{"bool", "int", "double", "String"};
        UnitElement &unit = builder_.addUnit(line, Kind::classKind, "Machine" + number, "A machine of its line.");
        for (std::size_t at = 0; at < 3; ++at) {
            builder_.addElement(unit, Kind::attribute, "value" + std::to_string(at + 1), types[(at + left_) % 4]);
        }
        builder_.addElement(unit, Kind::operation, "start", "bool ()");
        builder_.addElement(unit, Kind::operation, "stop", "void (int reason)");
    }

    ProjectBuilder &builder_;
    std::size_t left_;
};

} // namespace

NewProject createGeneratedProject(const std::string &path, std::size_t units, const std::string &tool) {
    std::uint64_t next = 1;
    ProjectBuilder builder(path, tool, [&next] { return ElementId::numbered(next++); });
    Plant(builder, units).build();
    return builder.write();
}

} // namespace orchard
