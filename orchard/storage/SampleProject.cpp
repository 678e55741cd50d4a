// Creates the sample: the controller of a small pump station.
#include "orchard/storage/ProjectBuilder.h"

namespace orchard {

namespace {

class PumpStation {
  public:
    explicit PumpStation(ProjectBuilder &builder) : builder_(builder) {}

    void build() {
        builder_.project().setDescription("Controller of a pump station with two pumps and a storm tank.");
        buildControl();
        buildDrives();
        buildOperator();
        buildComponent();
        builder_.addEmbedded(
            builder_.project(), "wiring.txt",
            "Terminal  Signal\n1         pump 1 on\n2         pump 2 on\n7         level, 4-20 mA\n");
    }

  private:
    struct Member {
        std::string_view name;
        std::string_view type;
    };

    UnitElement &addClass(Element &owner, std::string_view name, std::string_view description,
                          std::initializer_list<Member> attributes, std::initializer_list<Member> operations) {
        UnitElement &unit = builder_.addUnit(owner, Kind::classKind, name, description);
        for (const Member &member : attributes) {
            builder_.addElement(unit, Kind::attribute, member.name, member.type);
        }
        for (const Member &member : operations) {
            builder_.addElement(unit, Kind::operation, member.name, member.type);
        }
        return unit;
    }

    void buildControl() {
        UnitElement &control = builder_.addUnit(builder_.project(), Kind::subsystem, "Control",
                                                "Decides which pump runs.", "Control");
        controller_ = &addClass(control, "PumpController", "Starts and stops the pumps by the level in the tank.",
                                {{"demand", "double"}, {"leadPump", "int"}},
                                {{"onLevel", "void (double metres)"}, {"swapLead", "void ()"}});
        regulator_ = &addClass(control, "LevelRegulator", "Holds the level between two limits.",
                               {{"low", "double"}, {"high", "double"}}, {{"step", "double (double level)"}});
        UnitElement &alarms = addClass(control, "AlarmList", "What the operator has to see.",
                                       {{"entries", "AlarmEntry[*]"}}, {{"acknowledge", "bool (int entry)"}});
        Element &entry = builder_.addElement(alarms, Kind::classKind, "AlarmEntry");
        builder_.addElement(entry, Kind::attribute, "raisedAt", "Time");
        builder_.addElement(entry, Kind::attribute, "text", "String");
    }

    void buildDrives() {
        UnitElement &drives = builder_.addUnit(builder_.project(), Kind::subsystem, "Drives", "What moves water.");
        pump_ = &addClass(drives, "Pump", "One pump with its motor protection.",
                          {{"running", "bool"}, {"hours", "double"}}, {{"start", "bool ()"}, {"stop", "void ()"}});
        addClass(drives, "Valve", "A motor valve.", {{"position", "double"}},
                 {{"open", "void ()"}, {"close", "void ()"}});
        UnitElement &sensors = builder_.addUnit(drives, Kind::subsystem, "Sensors", "What measures.");
        addClass(sensors, "LevelSensor", "Level in the tank, from a current of 4 to 20 mA.",
                 {{"zero", "double"}, {"span", "double"}}, {{"read", "double ()"}});
        addClass(sensors, "FlowSensor", "Flow in the pressure pipe.", {{"pulsesPerLitre", "double"}},
                 {{"read", "double ()"}});
    }

    void buildOperator() {
        UnitElement &desk =
            builder_.addUnit(builder_.project(), Kind::subsystem, "Operator", "What people touch.");
        addClass(desk, "Panel", "Lamps and buttons on the cabinet.", {{"lamps", "bool[8]"}},
                 {{"onButton", "void (int button)"}});
    }

    void buildComponent() {
        UnitElement &component =
            builder_.addUnit(builder_.project(), Kind::component, "Controller", "The program in the cabinet.");
        Element &debug = builder_.addElement(component, Kind::configuration, "Debug");
        builder_.addElement(component, Kind::configuration, "Release").setRespectMode(true);
        UnitElement &control = builder_.addUnit(component, Kind::file, "ControlCode", "control.cpp");
        builder_.addFragment(control, *controller_);
        builder_.addFragment(control, *regulator_);
        UnitElement &drives = builder_.addUnit(component, Kind::file, "DrivesCode", "drives.cpp");
        builder_.addFragment(drives, *pump_);
        builder_.setActive(component, debug);
    }

    ProjectBuilder &builder_;
    UnitElement *controller_ = nullptr;
    UnitElement *regulator_ = nullptr;
    UnitElement *pump_ = nullptr;
};

} // namespace

NewProject createSampleProject(const std::string &path, const std::string &tool) {
    ProjectBuilder builder(path, tool, ElementId::random);
    PumpStation(builder).build();
    return builder.write();
}

} // namespace orchard
